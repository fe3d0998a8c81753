#include "controls/FaderAccessible.h"

#include "controls/FaderKnob.h"
#include "model/Levels.h"

#include <QAccessibleWidget>

namespace vek {

namespace {

class FaderAccessible final : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    explicit FaderAccessible(FaderKnob* knob)
        : QAccessibleWidget(knob, QAccessible::Slider), level_(knob->Shown()) {}

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface)
            return static_cast<QAccessibleValueInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    QVariant currentValue() const override { return level_.Level(); }
    void setCurrentValue(const QVariant& value) override { level_.MoveTo(value.toDouble()); }
    QVariant maximumValue() const override { return level_.MaxLevel(); }
    QVariant minimumValue() const override { return level_.MinLevel(); }
    QVariant minimumStepSize() const override { return faderStep; }

  private:
    AdjustableLevel& level_;
};

QAccessibleInterface* MakeFaderAccessible(const QString&, QObject* object) {
    auto* knob = qobject_cast<FaderKnob*>(object);
    return knob == nullptr ? nullptr : new FaderAccessible(knob);
}

} // namespace

void InstallFaderAccessible() { QAccessible::installFactory(MakeFaderAccessible); }

} // namespace vek
