// A line of text that gives way when there is no room for it.
#pragma once

#include <QLabel>

namespace vek {

/// Shows its text with its middle left out where it is too narrow for all of it. For names of files and
/// devices, which can be of any length and are told apart by their beginning and end. Plain text, one line.
class ElidedLabel : public QLabel {
    Q_OBJECT

  public:
    explicit ElidedLabel(const QString& text = {}, QWidget* parent = nullptr);

    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
};

} // namespace vek
