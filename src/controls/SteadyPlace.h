// Room for a label whose text changes often.
#pragma once

#include <QLabel>

namespace vek {

/// Holds a label in a place of constant size. To set a text lays out anew all that is around it, up to the
/// window; here it only paints.
class SteadyPlace : public QWidget {
    Q_OBJECT

  public:
    /// Takes the label over. `characters` and `lines` are the room for its text, its margins come on top.
    SteadyPlace(QLabel* label, int characters, int lines, QWidget* parent = nullptr);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    QLabel* label_;
    int characters_;
    int lines_;
};

} // namespace vek
