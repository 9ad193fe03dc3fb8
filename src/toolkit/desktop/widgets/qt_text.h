#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace keldrin {

/// Text of the program, which is bytes of UTF-8, as Qt's.
inline QString qtText(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string plainText(const QString &text) {
    return text.toStdString();
}

} // namespace keldrin
