// The lists of the panels beside the pages.
#pragma once

#include <QIcon>
#include <QListWidget>

namespace vek {

/// The list `Entries`: long lines wrap.
QListWidget* MakeEntries(const QString& accessibleName, QWidget* parent);
void AddEntry(QListWidget& entries, const QString& text, const QIcon& icon = {});
/// Goes to the row that was the current one before the list was filled anew, or to the last one. An empty
/// list tells why, in a line that is no entry.
void FinishEntries(QListWidget& entries, const QString& whenEmpty, int formerRow);

} // namespace vek
