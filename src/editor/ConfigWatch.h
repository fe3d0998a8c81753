// The checks of the configuration while it is edited.
#pragma once

#include "inspect/Findings.h"
#include "model/Config.h"

#include <QObject>
#include <QTimer>

#include <optional>
#include <vector>

namespace vek {

class EditHistory;

/// Looks at Config 50 ms after the last edit, so that no key waits for it.
class ConfigWatch : public QObject {
    Q_OBJECT

  public:
    /// The history must outlive this object.
    ConfigWatch(EditHistory& history, QObject* parent);

    /// What the checks say of Config as it is now, the worst first.
    const std::vector<Finding>& Found();
    /// What they said when they last looked.
    const std::vector<Finding>& LastFound() const { return found_; }

  Q_SIGNALS:
    /// Config has changed, and has been checked.
    void Looked();

  private:
    QTimer timer_;
    std::optional<MatrixConfig> checked_;
    std::vector<Finding> found_;
};

} // namespace vek
