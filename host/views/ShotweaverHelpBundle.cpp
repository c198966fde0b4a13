#include "host/views/ShotweaverHelpBundle.h"

#include <QCoreApplication>
#include <QDir>

namespace shotweaver {

std::string ShotweaverHelpBundle::path(const std::string& resource, const std::string& extension) {
#if defined(Q_OS_MACOS)
    const QString folder = QStringLiteral("/../Resources");
#else
    const QString folder = QStringLiteral("/../share/shotweaver");
#endif
    const QString path = QDir::cleanPath(QCoreApplication::applicationDirPath() + folder);
    return path.toStdString() + "/" + resource + "." + extension;
}

} // namespace shotweaver
