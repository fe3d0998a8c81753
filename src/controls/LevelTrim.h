// A vertical fader with a numeric read-out.
#pragma once

#include "controls/FaderKnob.h"
#include "controls/LevelTrimGeometry.h"

#include <QWidget>

namespace vek {

class KeyFilteredLineEdit;

/// Children: the knob `Command1` and the read-out `Text2`. The knob is dragged, or moved by the arrow keys
/// (1 dB), the page keys (6 dB), Home (bottom) and End (top); the read-out takes a typed level. After any
/// change by the user the level is a whole number of decibels within the limits. The mouse wheel does
/// nothing, so that scrolling a page never changes a level.
class LevelTrim : public QWidget, public AdjustableLevel {
    Q_OBJECT
    Q_PROPERTY(float Level READ Level WRITE SetLevel)
    Q_PROPERTY(float MaxLevel READ MaxLevel WRITE SetMaxLevel)
    Q_PROPERTY(float MinLevel READ MinLevel WRITE SetMinLevel)

  public:
    explicit LevelTrim(QWidget* parent = nullptr);
    ~LevelTrim() override;

    /// dB; initially 0. A level set from code is kept as it is, also outside the limits or between whole
    /// decibels; the knob then stands at the nearest end. Must be finite.
    float Level() const override { return level_; }
    void SetLevel(float value);
    /// dB at the top of the track; initially trimMaximum.
    float MaxLevel() const override { return range_.Max; }
    void SetMaxLevel(float value);
    /// dB at the bottom of the track; initially trimMinimum.
    float MinLevel() const override { return range_.Min; }
    void SetMinLevel(float value);

    /// Moves the fader as a user who enters a level: whole decibels within the limits, and Change() when the
    /// level differs from the former one.
    void MoveTo(double value) override;

    /// Names the knob and the read-out for assistive technology ("Input 3 trim").
    void SetAccessibleTitle(const QString& title);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    /// The user released the knob (moved or not), moved it with a key, or entered another level. Never raised
    /// by setting a property.
    void Change();
    /// A mouse button was pressed in the read-out.
    void TextClicked();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    bool TakesKey(QChar key);
    void DragKnob(int wantedTop);
    void AcceptText();
    void StoreLevel(float value);
    void LimitsChanged();
    void PlaceKnob();
    void Arrange();
    FaderTrack Track() const;
    int TrackCentre() const;
    QFont ScaleFont() const;
    QSize SizeForTravel(int travel) const;

    float level_ = 0.0F;
    LevelRange range_;
    KeyFilteredLineEdit* Text2_; ///< made before the knob: Tab reaches it first (a focus proxy would skip it)
    FaderKnob* Command1_;
};

} // namespace vek
