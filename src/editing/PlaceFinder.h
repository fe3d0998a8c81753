// The way to a field in the window.
#pragma once

#include "inspect/FieldKind.h"

class QTabWidget;

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
    /// Shows mode, output and page of the field. The overview stays in front for what it shows.
    void GoTo(const FieldPlace& place) const;
    /// Shows them in any case, and gives the page the keyboard.
    void Enter(const FieldPlace& place) const;

  private:
    void Choose(const FieldPlace& place, int page) const;

    ModelView& view_;
    const EditorPages& pages_;
    QTabWidget& tabs_;
};

} // namespace vek
