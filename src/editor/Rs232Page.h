// The page "RS232 Codes": the codes with which a host drives each output. They are the same in every
// configuration.
#pragma once

#include <QWidget>

namespace vek {

class Rs232Page : public QWidget {
    Q_OBJECT

  public:
    explicit Rs232Page(QWidget* parent = nullptr);
};

} // namespace vek
