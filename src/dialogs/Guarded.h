// Where an event handler enters the program: run-time errors become a message box, the window lives on.
#pragma once

#include "base/Errors.h"
#include "dialogs/Dialogs.h"

#include <new>
#include <utility>

namespace vek {

/// Shows the text of a run-time error as the user knows it: titled "Error!", with an exclamation icon.
void ShowRunTimeError(Dialogs& dialogs, QWidget* parent, const char* text);

/// Runs the callable. A run-time error or exhausted memory ends it and is shown; any other exception passes.
/// Returns whether the callable ran to its end.
template <class Callable>
bool Guarded(Dialogs& dialogs, QWidget* parent, Callable&& callable) {
    try {
        std::forward<Callable>(callable)();
        return true;
    } catch (const RunTimeError& error) {
        ShowRunTimeError(dialogs, parent, error.what());
    } catch (const std::bad_alloc&) {
        ShowRunTimeError(dialogs, parent, "Out of memory");
    }
    return false;
}

} // namespace vek
