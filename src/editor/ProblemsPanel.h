// What the checks find, as a list beside the pages.
#pragma once

#include "editing/PlaceFinder.h"
#include "inspect/Findings.h"

#include <QDockWidget>

#include <vector>

class QListWidget;

namespace vek {

class ConfigWatch;

/// The findings in the list `Entries`, the worst first; Enter or a double click goes to one.
class ProblemsPanel : public QDockWidget {
    Q_OBJECT

  public:
    /// The watch must outlive this object.
    ProblemsPanel(ConfigWatch& watch, const PlaceFinder& places, QWidget* parent);

  Q_SIGNALS:
    /// Why nothing came of what the user did.
    void Told(const QString& text);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    void Fill();
    void GoTo(int row);

    ConfigWatch& watch_;
    const PlaceFinder places_;
    QListWidget* entries_;
    std::vector<Finding> shown_;
};

} // namespace vek
