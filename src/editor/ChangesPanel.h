// What the configuration differs in from another one, as a list beside the pages.
#pragma once

#include "editing/PlaceFinder.h"
#include "inspect/ConfigDiff.h"

#include <QDockWidget>

#include <functional>
#include <optional>
#include <vector>

class QComboBox;
class QListWidget;
class QPushButton;

namespace vek {

class Dialogs;
class ModelView;

/// The differences in the list `Entries`; Enter or a double click goes to one, the button or Delete takes it
/// back as a step of its own. What they are compared with is chosen in `ComparedWith`.
class ChangesPanel : public QDockWidget {
    Q_OBJECT

  public:
    /// Null while nothing has been programmed.
    using LastProgrammed = std::function<const MatrixConfig*()>;

    /// All must outlive this object.
    ChangesPanel(ModelView& view, const PlaceFinder& places, Dialogs& boxes, LastProgrammed lastProgrammed,
                 QWidget* parent);

    /// Fills the list anew if either configuration has changed.
    void Look();

  Q_SIGNALS:
    void TakenBack(vek::FieldKind kind);
    /// Why nothing came of what the user did.
    void Told(const QString& text);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    enum Base : int { SavedFile, OtherFile, Programmed };

    QWidget* MakeContents();
    void Choose(int base);
    bool ChooseFile();
    const MatrixConfig& BaseConfig() const;
    void Fill();
    void ShowWhatCanBeTakenBack();
    /// Why the difference cannot be taken back; empty when it can.
    QString Refusal(const FieldDifference& difference) const;
    const FieldDifference* Current() const;
    void GoTo();
    void TakeBack();

    ModelView& view_;
    const PlaceFinder places_;
    Dialogs& boxes_;
    LastProgrammed lastProgrammed_;
    QComboBox* comparedWith_;
    QListWidget* entries_;
    QPushButton* takeBack_;
    Base base_ = SavedFile;
    MatrixConfig otherFile_;
    // What the list shows.
    std::vector<FieldDifference> differences_;
    MatrixConfig before_;
    std::optional<MatrixConfig> after_;
};

} // namespace vek
