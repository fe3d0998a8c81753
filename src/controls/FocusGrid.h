// A grid of controls that is one Tab stop.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <cstddef>
#include <vector>

namespace vek {

/// The arrow keys, Home and End move the focus among the controls; Tab goes to the one that had it last and
/// then leaves the grid. Belongs to `parent`; the controls may go before it.
class FocusGrid : public QObject {
    Q_OBJECT

  public:
    FocusGrid(std::size_t columns, QWidget* parent) : QObject(parent), columns_(columns) {}

    /// Puts a control into the next cell, row by row. The first is the Tab stop to begin with.
    void Add(QWidget* control);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void MakeStop(std::size_t index);
    std::size_t Beside(std::size_t index, int key) const;

    std::vector<QPointer<QWidget>> controls_;
    std::size_t columns_;
    std::size_t stop_ = 0;
};

/// True when the widget has the focus and the user moves it with the keyboard, so that it has to be seen.
inline bool ShowsFocus(const QWidget& widget) {
    return widget.hasFocus() && widget.window()->testAttribute(Qt::WA_KeyboardFocusChange);
}

} // namespace vek
