// Texts between the model (Windows-1252 bytes, CR LF) and the window (QString, LF).
#pragma once

#include "model/Names.h"

#include <QString>

#include <string>
#include <string_view>

namespace vek {

QString FromBytes(std::string_view bytes);

/// Characters outside the code page become "?".
std::string ToBytes(const QString& text);

/// A text constant of the program, ASCII or UTF-8.
inline QString FromConstant(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// CR LF, and a CR or LF that stands alone, become LF, as an editing box shows them.
QString LinesFromBytes(std::string_view bytes);

/// Every line end becomes CR LF.
std::string LinesToBytes(const QString& text);

/// A level as the user reads it: "+6dB".
QString LevelText(float level);

/// What the notes call it; empty for what has no name. Index from 0.
QString NameOf(const Names& names, NameKind kind, std::size_t index);
/// "Mode 2 Evening", or "Mode 2" for what has no name.
QString NumberAndName(const Names& names, NameKind kind, std::size_t index);

/// Name of element `index` of a control array.
QString ElementName(std::string_view name, std::size_t index);

} // namespace vek
