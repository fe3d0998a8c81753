// Check boxes and radio buttons that can be seen in dark palettes.
#pragma once

#include <QProxyStyle>

namespace vek {

/// Qt's own style frames an empty check box or radio button in a darker shade of the window, which is lost
/// where the window is dark. There it gets a frame in a shade of the text.
class VisibleMarks : public QProxyStyle {
    Q_OBJECT

  public:
    using QProxyStyle::QProxyStyle;

    /// Puts it over the application's style if that needs it; before the first widget.
    static void Install();

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
};

} // namespace vek
