#pragma once

#include "ui/UiTable.h"

#include <QColor>
#include <QString>

#include <string>
#include <string_view>

// Texts and colours between the host and the window system.

inline QString toQt(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string fromQt(const QString& text) {
    return text.toStdString();
}

inline QColor toQt(veldrin::Color color) {
    return QColor::fromRgb(static_cast<QRgb>(color));
}

// Places in a text: bytes there, characters here.
inline int qtPlace(std::string_view text, int byte) {
    const auto end = static_cast<std::size_t>(std::max(byte, 0));
    return static_cast<int>(toQt(text.substr(0, std::min(end, text.size()))).size());
}

inline int bytePlace(const QString& text, int character) {
    return static_cast<int>(text.left(character).toUtf8().size());
}
