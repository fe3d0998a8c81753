// The page "RS232 Codes": the codes with which a host drives each output. They are the same in every
// configuration.
#pragma once

#include <QWidget>

#include <vector>

class QLabel;

namespace vek {

class Rs232Page : public QWidget {
    Q_OBJECT

  public:
    explicit Rs232Page(QWidget* parent = nullptr);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    std::vector<QLabel*> codes_; // owned by this widget
};

} // namespace vek
