#include "controls/TextConversion.h"

#include "base/Windows1252.h"

#include <QList>

namespace vek {

QString FromBytes(std::string_view bytes) {
    QString text;
    text.reserve(static_cast<qsizetype>(bytes.size()));
    for (const char byte : bytes)
        text += QChar(FromWindows1252(static_cast<unsigned char>(byte)));
    return text;
}

std::string ToBytes(const QString& text) {
    std::string bytes;
    for (const uint character : text.toUcs4())
        bytes += static_cast<char>(ToWindows1252(character).value_or('?'));
    return bytes;
}

QString LinesFromBytes(std::string_view bytes) {
    QString text = FromBytes(bytes);
    text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    return text;
}

std::string LinesToBytes(const QString& text) {
    QString lines = text;
    lines.replace(QLatin1String("\r\n"), QLatin1String("\n"));
    lines.replace(QLatin1Char('\r'), QLatin1Char('\n'));
    lines.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    return ToBytes(lines);
}

QString ElementName(std::string_view name, std::size_t index) {
    return FromConstant(name) + QLatin1Char('_') + QString::number(index);
}

} // namespace vek
