// Copy and Paste of a mode or an output, from the context menus of the selectors.
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

  private:
    void CopyMode();
    void PasteMode();
    void CopyOutput();
    void PasteOutput();
    void PasteFailed(const QString& text);

    Selectors& selectors_;
    ModelView& view_;
    WindowMessages& messages_;
    // The mode and the output (0 … 7) whose menu was opened last.
    std::size_t menuMode_ = 0;
    std::size_t menuOutput_ = 0;
};

} // namespace vek
