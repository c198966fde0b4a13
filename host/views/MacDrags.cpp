#include "host/views/MacDrags.h"

#include "host/FinalCutIntegration.h"

#include <QMimeData>
#include <QStringList>
#include <QUtiMimeConverter>
#include <QVariant>
#include <QtGui/private/qmacmimeregistry_p.h>

#include <algorithm>

namespace shotweaver {

namespace {

bool isAccepted(const QString& type) {
    const std::vector<std::string>& types = acceptedXMLTypes();
    return std::find(types.begin(), types.end(), type.toStdString()) != types.end();
}

/// Gives each accepted type its own name as its MIME type.
class FinalCutTypes final : public QUtiMimeConverter {
  public:
    QString mimeForUti(const QString& uti) const override {
        return isAccepted(uti) ? uti : QString();
    }
    QString utiForMime(const QString& mime) const override {
        return isAccepted(mime) ? mime : QString();
    }
    QVariant convertToMime(const QString&, const QList<QByteArray>& data,
                           const QString&) const override {
        return data.isEmpty() ? QVariant() : QVariant(data.constFirst());
    }
    QList<QByteArray> convertFromMime(const QString&, const QVariant& data,
                                      const QString&) const override {
        return {data.toByteArray()};
    }
};

} // namespace

void takeFinalCutDrags() {
    static const FinalCutTypes converter;
    QStringList types;
    for (const std::string& type : acceptedXMLTypes())
        types.append(QString::fromStdString(type));
    QMacMimeRegistry::registerDraggedTypes(types);
}

} // namespace shotweaver
