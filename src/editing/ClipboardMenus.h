// Copy and Paste of a mode or an output, for the context menus of the selectors and for whoever shows modes
// and outputs.
#pragma once

#include <QObject>

#include <cstddef>

class QMenu;

namespace vek {

class ModelView;
class Selectors;
class WindowMessages;

class ClipboardMenus : public QObject {
    Q_OBJECT

  public:
    /// All must outlive this object. The menus belong to the selectors.
    ClipboardMenus(Selectors& selectors, ModelView& view, WindowMessages& messages,
                   QObject* parent = nullptr);

    // Modes and outputs 0 … 7. What cannot be pasted changes nothing and is told in a box.

    void CopyMode(std::size_t mode);
    void PasteMode(std::size_t mode);
    /// The levels of an output in a mode.
    void CopyOutput(std::size_t mode, std::size_t output);
    /// Makes the mode the current one before.
    void PasteOutput(std::size_t mode, std::size_t output);

    /// Whether pasting would work now.
    static bool HoldsMode();
    static bool HoldsOutput();

  private:
    std::size_t CurrentMode() const;
    void PasteFailed(const QString& text);

    Selectors& selectors_;
    ModelView& view_;
    WindowMessages& messages_;
    // The mode and the output (0 … 7) whose menu was opened last.
    std::size_t menuMode_ = 0;
    std::size_t menuOutput_ = 0;
};

} // namespace vek
