// The dialog "Output Grouping": links outputs of a mode into selection groups.
#pragma once

#include "dialogs/GroupingLayout.h"
#include "model/Names.h"

#include <QDialog>

#include <array>

class QFrame;
class QLabel;

namespace vek {

class OutputLabel;

/// The outputs' chips `Label1_0` … `Label1_7` are dragged between the frames `Shape2_0` … `Shape2_4`, or
/// moved with the keys 0 to 4. Show with exec(); after QDialog::Accepted, Groups() holds the result.
class LinkingForm : public QDialog {
    Q_OBJECT

  public:
    /// The groups are 0 (not linked) … 4 for the outputs 0 … 7 of `mode`, which counts from 0; throws
    /// SubscriptError for any other group.
    LinkingForm(const LinkGroups& groups, std::size_t mode, const Names& names, QWidget* parent = nullptr);

    const LinkGroups& Groups() const { return groups_; }

  private:
    QLayout* MakeTitle(std::size_t mode);
    void MakeFrames();
    void MakeLabels();
    void FitToScreen();
    void LayOutDrawing();
    void LayOutLabels();
    std::optional<std::size_t> TargetOf(std::size_t output) const;
    void ShowTarget(std::optional<std::size_t> target);
    void Drop(std::size_t output);
    void MoveTo(std::size_t output, std::size_t group);

    LinkGroups groups_;
    Names names_;
    GroupingLayout layout_{{}};
    QWidget* drawing_;
    std::array<QFrame*, groupFrameCount> Shape2_ = {};
    std::array<QLabel*, groupFrameCount> captions_ = {};
    std::array<OutputLabel*, outputCount> Label1_ = {};
};

} // namespace vek
