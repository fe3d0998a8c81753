// The way to a field in the window.
#pragma once

#include "inspect/FieldKind.h"

class QTabWidget;
class QWidget;

namespace vek {

class ModelView;
struct EditorPages;

class PlaceFinder {
  public:
    /// All must outlive this object.
    PlaceFinder(ModelView& view, const EditorPages& pages, QTabWidget& tabs)
        : view_(view), pages_(pages), tabs_(tabs) {}

    /// The page of the field can be shown: not all can while online.
    bool Reachable(const FieldPlace& place) const;
    /// Shows mode, output and page of the field.
    void GoTo(const FieldPlace& place) const;
    /// The same, and gives the field the keyboard, or its page where the page has no control for it.
    void Enter(const FieldPlace& place) const;

  private:
    QWidget* ControlOf(const FieldPlace& place) const;

    ModelView& view_;
    const EditorPages& pages_;
    QTabWidget& tabs_;
};

} // namespace vek
