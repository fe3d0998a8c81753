// A pair of buttons that step a value up and down and repeat while held.
#pragma once

#include <QTimer>
#include <QWidget>

class QAbstractButton;

namespace vek {

/// `Up` above `Down`. The first step comes with the press, the next after 1000 ms, then one every 100 ms.
/// The buttons never take the focus.
class UpDownButtons : public QWidget {
    Q_OBJECT

  public:
    explicit UpDownButtons(QWidget* parent = nullptr);

    /// Names the buttons for assistive technology: "<what> up" and "<what> down".
    void SetAccessibleTitle(const QString& what);

  public Q_SLOTS:
    /// One tick of the repeat timer; does nothing while no button is held.
    void Timer1_Tick();

  Q_SIGNALS:
    /// A button was pressed; its first step follows unless the press has ended meanwhile.
    void Pressed();
    /// One step: direction is +1 or -1.
    void Step(int direction);
    /// The button was released, or the hold ended otherwise (disabled, hidden, another window in front; the
    /// last two are told once the event loop runs again).
    void Released();

  protected:
    bool event(QEvent* event) override;

  private:
    QAbstractButton* MakeButton(const QString& name, Qt::ArrowType arrow, bool& held, int direction);
    void Press(bool& held, int direction);
    void Release(bool& held);
    void Interrupt();

    QAbstractButton* up_;
    QAbstractButton* down_;
    QTimer timer_{this};
    bool upHeld_ = false;
    bool downHeld_ = false;
};

} // namespace vek
