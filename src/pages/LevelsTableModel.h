// What the table of the levels of all outputs shows: a row per output, a column per setting.
#pragma once

#include "model/LevelRules.h"
#include "model/Names.h"

#include <QAbstractTableModel>

#include <array>
#include <cstddef>

namespace vek {

class LevelsTableModel : public QAbstractTableModel {
    Q_OBJECT

  public:
    using QAbstractTableModel::QAbstractTableModel;

    enum Column : int { OutputColumn, Maximum, Start, Minimum, Step, Mute, PreviousStart, ColumnCount };

    /// The name of a row's output, in column 0.
    static constexpr int nameRole = Qt::UserRole;
    /// True in the row of the output that the page edits.
    static constexpr int currentRole = Qt::UserRole + 1;

    /// `current` is the output (0 … 7) that the page edits.
    void Show(const std::array<OutputLevelRecord, outputCount>& levels, std::size_t current);
    void ShowNames(const Names& names);

    /// "Output 3 Foyer"
    QString OutputText(std::size_t output) const;
    /// A level as the box of its setting shows it: snapped to half decibels and limited.
    static float Shown(int column, float level);
    /// Adds the setting of a cell to what is entered; nothing where it cannot be edited.
    void AddTo(LevelEntry& entry, const QModelIndex& cell) const;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// Changes nothing here: Entered() tells.
    bool setData(const QModelIndex& index, const QVariant& value, int role = Qt::EditRole) override;

  Q_SIGNALS:
    /// The user entered a setting of an output; a level is snapped to half decibels and limited.
    void Entered(const QModelIndex& cell, const vek::LevelEntry& entry);

  private:
    QVariant OutputData(const QModelIndex& index, int role) const;
    QString CellText(const QModelIndex& index) const;
    const OutputLevelRecord& At(const QModelIndex& index) const {
        return levels_[static_cast<std::size_t>(index.row())];
    }

    std::array<OutputLevelRecord, outputCount> levels_;
    std::size_t current_ = 0;
    Names names_;
};

} // namespace vek
