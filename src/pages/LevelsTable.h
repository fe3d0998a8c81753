// The table of the levels of all outputs of the current mode, edited in place.
#pragma once

#include "model/LevelRules.h"

#include <QTableView>

#include <cstddef>
#include <optional>
#include <vector>

namespace vek {

class LevelsTableModel;
class Names;

/// A level is typed with the keys of its box, the arrow keys step it while it is edited. What is entered goes
/// to the chosen cells of the same column too.
class LevelsTable : public QTableView {
    Q_OBJECT

  public:
    explicit LevelsTable(QWidget* parent = nullptr);

    /// `current` is the output (0 … 7) that is marked.
    void Show(const std::array<OutputLevelRecord, outputCount>& levels, std::size_t current);
    void ShowNames(const Names& names);
    /// "Output 3 Foyer", from 0
    QString OutputText(std::size_t output) const;

    /// The chosen settings of the output with the current cell.
    struct Choice {
        std::size_t Output;   ///< 0 … 7
        QStringList Captions; ///< of the columns
        LevelEntry Entry;
    };
    /// Nothing when no setting is chosen.
    std::optional<Choice> Chosen() const;
    /// Enters the chosen settings for all other outputs.
    void ApplyToAll();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  Q_SIGNALS:
    /// The user entered settings for these outputs (0 … 7).
    void Entered(const std::vector<std::size_t>& outputs, const vek::LevelEntry& entry);
    /// A double click on an output's number, or Enter: the page is to edit it.
    void OutputWanted(std::size_t output);
    void ChoiceChanged();

  protected:
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void EnterChosen(const QModelIndex& cell, const LevelEntry& entry);
    void WantOutputOf(const QModelIndex& cell);
    int SettingsWidth() const;
    QSize SizeForNames(int width) const;

    LevelsTableModel* model_;
};

} // namespace vek
