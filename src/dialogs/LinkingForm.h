// The dialog "Output Grouping": links outputs of a mode into selection groups.
#pragma once

#include "dialogs/GroupingLayout.h"

#include <QDialog>

#include <array>

class QFrame;

namespace vek {

class OutputLabel;

/// The numbers `Label1_0` … `Label1_7` of the outputs are dragged between the frames `Shape2_0` … `Shape2_4`,
/// or moved with the keys 0 to 4. Show with exec(); after QDialog::Accepted, Groups() holds the result.
class LinkingForm : public QDialog {
    Q_OBJECT

  public:
    /// The groups are 0 (not linked) … 4 for the outputs 0 … 7; throws SubscriptError for any other group.
    explicit LinkingForm(const LinkGroups& groups, QWidget* parent = nullptr);

    const LinkGroups& Groups() const { return groups_; }

  private:
    void MakeFrames(QWidget* drawing);
    void MakeLabels(QWidget* drawing);
    void LayOutLabels();
    std::optional<std::size_t> TargetOf(std::size_t output) const;
    void ShowTarget(std::optional<std::size_t> target);
    void Drop(std::size_t output);
    void MoveTo(std::size_t output, std::size_t group);

    LinkGroups groups_;
    GroupingLayout layout_;
    std::array<QFrame*, groupFrameCount> Shape2_ = {};
    std::array<OutputLabel*, outputCount> Label1_ = {};
};

} // namespace vek
