// A line of text that gives way when there is no room for it.
#pragma once

#include <QLabel>

namespace vek {

/// Shows its text with a piece left out where it is too narrow for all of it; the middle by default, because
/// names of files and devices are told apart by their beginning and end. Plain text, one line.
class ElidedLabel : public QLabel {
    Q_OBJECT

  public:
    explicit ElidedLabel(const QString& text = {}, QWidget* parent = nullptr,
                         Qt::TextElideMode leftOut = Qt::ElideMiddle);

    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    virtual QColor TextColour() const;

  private:
    Qt::TextElideMode leftOut_;
};

} // namespace vek
