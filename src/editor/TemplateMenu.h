// The menu of configurations to start from.
#pragma once

#include <QObject>

#include <string>
#include <vector>

class QMenu;

namespace vek {

/// Fills a menu with the *.VMC files of some folders whenever it is opened: `Template_0`, …, one folder after
/// the other, each in alphabetical order.
class TemplateMenu : public QObject {
    Q_OBJECT

  public:
    /// Belongs to the menu. The last folder is the user's own, and need not be there any more than the
    /// others; paths in the system's own bytes.
    TemplateMenu(QMenu& menu, std::vector<std::string> folders);

  Q_SIGNALS:
    void Chosen(const std::string& path);

  private:
    void Fill();

    QMenu& menu_;
    std::vector<std::string> folders_;
};

} // namespace vek
