#include "host/views/ProgramResources.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

/// The description is in a library, so it has to be asked for. Outside of every namespace, as the
/// macro wants it.
static void loadDescription() {
    Q_INIT_RESOURCE(description);
}

namespace shotweaver {

ExtensionDescription extensionDescription() {
    loadDescription();
    QFile file(QStringLiteral(":/ExtensionDescription.json"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    return readExtensionDescription(file.readAll().toStdString());
}

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
