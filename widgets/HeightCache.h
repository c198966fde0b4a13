#pragma once

#include <QFont>
#include <QHash>
#include <QString>

namespace shotweaver {

/// The heights that a widget's text takes, by width. Layouts within layouts ask for them again and
/// again, and each answer lays out the text.
class HeightCache {
  public:
    /// The height for a width, from `measure()` when it is not known yet.
    template <class Measure>
    int height(const QString& text, const QFont& font, int width, Measure measure) {
        if (text != text_ || font != font_) {
            text_ = text;
            font_ = font;
            heights_.clear();
        }
        const auto known = heights_.constFind(width);
        if (known != heights_.constEnd()) return *known;
        return *heights_.insert(width, measure());
    }

  private:
    QString text_;
    QFont font_;
    QHash<int, int> heights_;
};

} // namespace shotweaver
