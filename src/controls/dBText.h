// A box for entering a level in half decibels.
#pragma once

#include "model/Levels.h"

#include <QWidget>

namespace vek {

class KeyFilteredLineEdit;
class UpDownButtons;

/// The keys that a level is typed with: the digits 0 to 8, the signs and the point; 9 is refused like any
/// other key.
constexpr bool IsLevelKey(QChar key) {
    return (key >= u'0' && key <= u'8') || key == u'-' || key == u'+' || key == u'.';
}

/// Children: the text box `Text1` ("+1.5dB") and the buttons `Up` and `Down`, which step by levelStep and
/// repeat while held. The arrow keys step from the keyboard. The level is within the limits after any change.
class dBText : public QWidget {
    Q_OBJECT
    Q_PROPERTY(float Level READ Level WRITE SetLevel)
    Q_PROPERTY(float MaxLevel READ MaxLevel WRITE SetMaxLevel)
    Q_PROPERTY(float MinLevel READ MinLevel WRITE SetMinLevel)

  public:
    explicit dBText(QWidget* parent = nullptr);
    ~dBText() override;

    /// dB; a level that is set is snapped to half decibels and limited. Initially 0.
    float Level() const { return level_; }
    void SetLevel(float value);
    /// The same, as if the user had entered it.
    void EnterLevel(float value);
    /// The user has entered a level, be it the one that was shown already, since SetLevel() was last called.
    bool Touched() const { return touched_; }
    /// dB; setting a limit pulls the level inside. Initially levelMaximum and levelMinimum.
    float MaxLevel() const { return maxLevel_; }
    void SetMaxLevel(float value);
    float MinLevel() const { return minLevel_; }
    void SetMinLevel(float value);

    /// The level that SetLevel would give within the present limits.
    float Snapped(float value) const;

    /// Wide enough for any level, and no wider.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

    /// Names the box and its buttons for assistive technology ("Maximum Level").
    void SetAccessibleTitle(const QString& title);

  Q_SIGNALS:
    /// The user finished a change: Enter, a button released, an arrow key, or the box left (see Leave()).
    /// Never raised by setting a property.
    void Change();

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    bool TakesKey(QChar key);
    void Show(float value);
    void TakeText();
    void Step(int direction);
    void Enter();
    void Leave();

    float level_ = 0.0F;
    float maxLevel_ = levelMaximum;
    float minLevel_ = levelMinimum;
    bool touched_ = false;
    KeyFilteredLineEdit* Text1_;
    UpDownButtons* buttons_;
};

} // namespace vek
