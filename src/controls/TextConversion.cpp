#include "controls/TextConversion.h"

#include "base/Windows1252.h"
#include "model/Levels.h"

#include <QList>

namespace vek {

using namespace Qt::StringLiterals;

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
    text.replace("\r\n"_L1, "\n"_L1);
    text.replace(u'\r', u'\n');
    return text;
}

std::string LinesToBytes(const QString& text) {
    QString lines = text;
    lines.replace("\r\n"_L1, "\n"_L1);
    lines.replace(u'\r', u'\n');
    lines.replace(u'\n', "\r\n"_L1);
    return ToBytes(lines);
}

QString LevelText(float level) { return QString::fromStdString(FormatLevelText(level)); }

QString NameOf(const Names& names, NameKind kind, std::size_t index) {
    return FromBytes(names.Of(kind, index));
}

QString NumberAndName(const Names& names, NameKind kind, std::size_t index) {
    QString text = FromConstant(NumberText(kind, index));
    if (const std::string& name = names.Of(kind, index); !name.empty())
        text += u' ' + FromBytes(name);
    return text;
}

QString ElementName(std::string_view name, std::size_t index) {
    return FromConstant(name) + u'_' + QString::number(index);
}

} // namespace vek
