// One VekNet address on the address page: its number when it is enabled, "OFF" when it is not.
#pragma once

#include <QAbstractButton>

namespace vek {

/// Left click or Space: clicked(). Right click, or the menu key: MenuRequested(). The owner sets the state,
/// with SetAddress() or SetOff(); a click alone changes nothing.
class AddressLabel : public QAbstractButton {
    Q_OBJECT

  public:
    /// `function` names the address to a screen reader.
    explicit AddressLabel(const QString& function, QWidget* parent = nullptr);

    void SetAddress(int address);
    void SetOff();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  Q_SIGNALS:
    void MenuRequested(const QPoint& globalPosition);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void nextCheckState() override {}

  private:
    void Show(bool enabled, const QString& shown);
};

} // namespace vek
