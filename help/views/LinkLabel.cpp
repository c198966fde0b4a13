#include "help/views/LinkLabel.h"

#include "widgets/WrappedLabel.h"

#include <QLabel>

namespace shotweaver {

QLabel* makeLink(const std::string& title, const std::string& url, style::TextStyle textStyle) {
    QLabel* const link = new WrappedLabel(textStyle, style::accent());
    link->setTextFormat(Qt::RichText);
    link->setText(QStringLiteral("<a href=\"%1\">%2</a>")
                      .arg(toQt(url).toHtmlEscaped(), toQt(title).toHtmlEscaped()));
    link->setTextInteractionFlags(Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard);
    link->setFocusPolicy(Qt::StrongFocus);
    link->setOpenExternalLinks(true);
    link->setToolTip(toQt(url));
    link->setAccessibleName(toQt(title));
    return link;
}

} // namespace shotweaver
