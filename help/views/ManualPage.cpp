#include "help/views/ManualPage.h"

#include "help/views/LinkLabel.h"
#include "widgets/Style.h"
#include "widgets/WrappedLabel.h"

#include <QGridLayout>
#include <QLabel>
#include <QVBoxLayout>

namespace shotweaver {

namespace {

/// Markup in which the hits of a text stand out.
QString marked(const QString& text, const std::vector<TextSearch::Hit>& hits) {
    const QString mark = QStringLiteral("<span style=\"background-color:%1\">%2</span>");
    QString html;
    qsizetype done = 0;
    for (const auto& [start, length] : hits) {
        const auto from = static_cast<qsizetype>(start);
        const auto count = static_cast<qsizetype>(length);
        html += text.mid(done, from - done).toHtmlEscaped();
        html += mark.arg(style::hit().name(), text.mid(from, count).toHtmlEscaped());
        done = from + count;
    }
    return html + text.mid(done).toHtmlEscaped();
}

/// Builds a page, top to bottom.
class PageMaker {
  public:
    explicit PageMaker(const HelpContent& content) : content_(content) {}

    ManualPage make(const ShotweaverManual::Section& section) {
        auto* const page = new QWidget;
        auto* const column = new QVBoxLayout(page);
        const int margin = style::scaled(style::wide);
        column->setContentsMargins(margin, margin, margin, margin);
        column->setSpacing(style::scaled(style::normal));
        QLabel* const title = textLabel(style::TextStyle::title, section.title);
        title->setObjectName(QStringLiteral("pageTitle"));
        column->addWidget(title);
        column->addWidget(
            textLabel(style::TextStyle::callout, section.summary, style::secondary()));
        for (const ShotweaverManual::Block& block : section.blocks)
            column->addWidget(makeBlock(block));
        column->addStretch();
        return {page, firstHit_};
    }

  private:
    QLabel* textLabel(style::TextStyle textStyle, const std::string& text,
                      const QColor& colour = style::text()) {
        QLabel* const label = new WrappedLabel(textStyle, colour);
        const std::vector<TextSearch::Hit> hits = content_.hitsIn(text);
        label->setTextFormat(hits.empty() ? Qt::PlainText : Qt::RichText);
        label->setText(hits.empty() ? toQt(text) : marked(toQt(text), hits));
        label->setTextInteractionFlags(Qt::TextSelectableByMouse);
        // No higher than the page's width makes it.
        QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Preferred);
        policy.setHeightForWidth(true);
        label->setSizePolicy(policy);
        if (!firstHit_ && !hits.empty()) firstHit_ = label;
        return label;
    }

    /// One row an item, each behind its marker.
    QWidget* makeList(const ShotweaverManual::Block& block) {
        constexpr int markerWidth = 24;
        auto* const list = new QWidget;
        auto* const grid = new QGridLayout(list);
        grid->setContentsMargins(0, 0, 0, 0);
        grid->setVerticalSpacing(style::scaled(6));
        grid->setHorizontalSpacing(style::scaled(style::tight));
        grid->setColumnMinimumWidth(0, style::scaled(markerWidth));
        grid->setColumnStretch(1, 1);
        int row = 0;
        for (const std::string& item : block.items.value_or(std::vector<std::string>{})) {
            QLabel* const marker = style::label(style::TextStyle::body, style::secondary());
            marker->setText(block.kind == "steps" ? QStringLiteral("%1.").arg(row + 1)
                                                  : QStringLiteral("•"));
            grid->addWidget(marker, row, 0, Qt::AlignTop | Qt::AlignRight);
            grid->addWidget(textLabel(style::TextStyle::body, item), row, 1, Qt::AlignTop);
            ++row;
        }
        return list;
    }

    static QWidget* makeLinks(const ShotweaverManual::Block& block) {
        auto* const links = new QWidget;
        auto* const column = new QVBoxLayout(links);
        column->setContentsMargins(0, 0, 0, 0);
        for (const auto& link : block.links.value_or(std::vector<ShotweaverManual::LinkItem>{}))
            column->addWidget(makeLink(link.title, link.url, style::TextStyle::body));
        return links;
    }

    QWidget* makeHeading(const ShotweaverManual::Block& block) {
        constexpr int spaceAbove = 6;
        QLabel* const heading = textLabel(style::TextStyle::headline, block.text.value_or(""));
        heading->setContentsMargins(0, style::scaled(spaceAbove), 0, 0);
        return heading;
    }

    QWidget* makeBlock(const ShotweaverManual::Block& block) {
        if (block.kind == "heading") return makeHeading(block);
        if (block.kind == "steps" || block.kind == "bullets") return makeList(block);
        if (block.kind == "links") return makeLinks(block);
        return textLabel(style::TextStyle::body, block.text.value_or(""));
    }

    const HelpContent& content_;
    QWidget* firstHit_ = nullptr;
};

} // namespace

ManualPage makeManualPage(const ShotweaverManual::Section& section, const HelpContent& content) {
    return PageMaker(content).make(section);
}

} // namespace shotweaver
