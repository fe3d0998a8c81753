#include "controls/FaderAccessible.h"

#include "controls/FaderKnob.h"
#include "controls/LevelTrim.h"

#include <QAccessibleWidget>

namespace vek {

namespace {

class FaderAccessible final : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    FaderAccessible(FaderKnob* knob, LevelTrim* fader)
        : QAccessibleWidget(knob, QAccessible::Slider), fader_(fader) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QVariant currentValue() const override { return fader_->Level(); }
    void setCurrentValue(const QVariant& value) override { fader_->MoveTo(value.toDouble()); }
    QVariant maximumValue() const override { return fader_->MaxLevel(); }
    QVariant minimumValue() const override { return fader_->MinLevel(); }
    QVariant minimumStepSize() const override { return 1.0F; }

  private:
    LevelTrim* fader_;
};

QAccessibleInterface* MakeFaderAccessible(const QString&, QObject* object) {
    auto* knob = qobject_cast<FaderKnob*>(object);
    auto* fader = knob == nullptr ? nullptr : qobject_cast<LevelTrim*>(knob->parentWidget());
    return fader == nullptr ? nullptr : new FaderAccessible(knob, fader);
}

} // namespace

void InstallFaderAccessible() { QAccessible::installFactory(MakeFaderAccessible); }

} // namespace vek
