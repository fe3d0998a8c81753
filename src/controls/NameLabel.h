// What something is called, beside its number.
#pragma once

#include "controls/ElidedLabel.h"

namespace vek {

/// A name in lighter text, its end left out where there is no room; the tool tip has all of it. Hidden while
/// there is no name, so it needs a parent.
class NameLabel : public ElidedLabel {
    Q_OBJECT

  public:
    explicit NameLabel(QWidget* parent);

    void SetName(const QString& name);

    /// Long names do not widen the page, and where it is narrow its beginning has to do.
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    QColor TextColour() const override;
};

} // namespace vek
