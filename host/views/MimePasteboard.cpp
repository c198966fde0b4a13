#include "host/views/MimePasteboard.h"

#include <QMimeData>
#include <QStringList>

namespace shotweaver {

std::vector<std::string> MimePasteboard::types() const {
    std::vector<std::string> types;
    for (const QString& format : data_.formats())
        types.push_back(format.toStdString());
    return types;
}

std::optional<std::string> MimePasteboard::data(const std::string& type) const {
    const QString format = QString::fromStdString(type);
    if (!data_.hasFormat(format)) return std::nullopt;
    return data_.data(format).toStdString();
}

} // namespace shotweaver
