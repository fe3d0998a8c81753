// One VekNet address on the address page: its number when it is enabled, "OFF" when it is not.
#pragma once

#include <QAbstractButton>

namespace vek {

/// Left click or Space: clicked(). Right click, or the menu key: MenuRequested(). The owner sets the state,
/// with ShowAddress(); a click alone changes nothing.
class AddressLabel : public QAbstractButton {
    Q_OBJECT

  public:
    explicit AddressLabel(QWidget* parent = nullptr);

    /// What the address is for, as a screen reader says it before the address and its state.
    void SetMeaning(const QString& meaning);
    void ShowAddress(int address, bool enabled);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

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
    void TellName();

    QString meaning_;
    int address_ = 0;
};

} // namespace vek
