// The knob of a fader: dragged by the mouse, stepped by keys, sent to 0 dB by a double click.
#pragma once

#include <QWidget>

#include <optional>

namespace vek {

/// What a knob stands for: a level within limits, all in dB.
class AdjustableLevel {
  public:
    virtual float Level() const = 0;
    virtual float MaxLevel() const = 0;
    virtual float MinLevel() const = 0;
    /// Sets the level as a user who enters it.
    virtual void MoveTo(double value) = 0;

  protected:
    ~AdjustableLevel() = default;
};

/// The knob only says where it is wanted; the fader that owns it moves it.
class FaderKnob : public QWidget {
    Q_OBJECT

  public:
    /// `shown` is what assistive technology reads and sets; it lives as long as the parent.
    FaderKnob(AdjustableLevel& shown, QWidget* parent);

    AdjustableLevel& Shown() const { return shown_; }

    /// A click elsewhere came in between: the next one here is not the second of a double click.
    void ForgetClick() { clicked_ = false; }

    QSize sizeHint() const override;

  Q_SIGNALS:
    /// While dragged: where the pointer wants the knob's top edge, in the parent's coordinates, not limited.
    void Dragged(int top);
    /// A key asks for a step in dB; infinite to go to an end.
    void Stepped(float decibels);
    /// A double click asks for 0 dB; the knob stays there until the button is released.
    void Zeroed();
    /// The mouse button was released, or the key that stepped. A key that repeats counts once more when it is
    /// released. A drag that ends because the knob is disabled or hidden or another window comes to the front
    /// counts as released once the event loop runs again.
    void Released();

  protected:
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void Interrupt();
    void EndRepeat();

    AdjustableLevel& shown_;
    bool dragging_ = false;
    bool repeating_ = false; ///< a held key has moved the knob since the last Released
    bool clicked_ = false;   ///< the last click in the fader was on the knob
    /// From the knob's top edge to the pointer, logical pixels; nothing while a double click holds the knob.
    std::optional<int> grabOffset_;
};

} // namespace vek
