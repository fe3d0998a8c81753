// Names of the user's in menus.
#pragma once

#include <QString>

namespace vek {

/// A name as it is: a menu takes "&" for the mark of a key, and a tab for the place of a shortcut.
inline QString MenuText(QString name) {
    return name.replace(u'&', QStringLiteral("&&")).replace(u'\t', u' ');
}

/// The name behind a number that is its key: "&1 hall.VMC" for index 0, no key from the tenth on.
inline QString NumberedText(std::size_t index, const QString& name) {
    const QString mark = index < 9 ? QStringLiteral("&") : QString();
    return mark + QString::number(index + 1) + u' ' + MenuText(name);
}

} // namespace vek
