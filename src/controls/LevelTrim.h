// A vertical fader with a numeric read-out.
#pragma once

#include "controls/FaderKnob.h"
#include "controls/LevelTrimGeometry.h"

#include <QWidget>

#include <optional>

namespace vek {

class KeyFilteredLineEdit;

/// What a fader shows beside its track; dB.
struct FaderMarks {
    LevelRange Shaded;          ///< a part of the track, as far as the track reaches
    std::optional<float> Start; ///< not shown when it is beyond the track

    bool operator==(const FaderMarks&) const = default;
};

/// Children: the knob `Command1` and the read-out `Text2`. The knob is dragged, or moved by the arrow keys
/// (1 dB), the page keys and clicks beside it (6 dB, a click no further than the pointer), Home (bottom), End
/// (top) and a double click (0 dB); the read-out takes a typed level. The mouse wheel moves it by 1 dB while
/// the fader has the focus, otherwise it scrolls the page. After any change by the user the level is a whole
/// number of decibels within the limits.
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

    /// Shows marks, for which there is room from the first call on.
    void ShowMarks(const FaderMarks& marks);

    /// Names the knob and the read-out for assistive technology ("Input 3 trim").
    void SetAccessibleTitle(const QString& title);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    /// The user released the knob (moved or not), moved it with a key, or entered another level, be it by the
    /// wheel or a click. Never raised by setting a property.
    void Change();
    /// A mouse button was pressed in the read-out.
    void TextClicked();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
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
    int KnobLeft() const;
    int TrackCentre() const { return KnobLeft() + Command1_->width() / 2; }
    int YAtLevel(float level) const;
    QString StartText() const;
    void PaintTrack(QPainter& painter) const;
    void PaintStart(QPainter& painter) const;
    void PaintScale(QPainter& painter, int left) const;
    QFont ScaleFont() const;
    QSize SizeForTravel(int travel) const;

    float level_ = 0.0F;
    LevelRange range_;
    std::optional<FaderMarks> marks_;
    int wheelRest_ = 0;          ///< what the wheel has turned beyond whole notches
    KeyFilteredLineEdit* Text2_; ///< made before the knob: Tab reaches it first (a focus proxy would skip it)
    FaderKnob* Command1_;
};

} // namespace vek
