#include "dialogs/Guarded.h"

namespace vek {

using namespace Qt::StringLiterals;

void ShowRunTimeError(Dialogs& dialogs, QWidget* parent, const char* text) {
    dialogs.Message(parent, MessageIcon::Exclamation, u"Error!"_s, QString::fromUtf8(text));
}

} // namespace vek
