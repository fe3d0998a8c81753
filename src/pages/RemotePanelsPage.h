// The page "Remote Panels": per output of the current mode its input sequence, its remote panels and its
// start route.
#pragma once

#include "model/Config.h"
#include "model/Names.h"

#include <QWidget>

#include <array>

class QCheckBox;

namespace vek {

class NameLabel;
class RemoteNumberPanel;

class RemotePanelsPage : public QWidget {
    Q_OBJECT

  public:
    explicit RemotePanelsPage(QWidget* parent = nullptr);

    // Index: output 0 … 7. Owned by this page.
    std::array<RemoteNumberPanel*, outputCount> RemotePaneInputs;
    std::array<RemoteNumberPanel*, outputCount> RemotePanelVolumes;
    std::array<RemoteNumberPanel*, outputCount> RemotePanelSelects;
    std::array<QCheckBox*, outputCount> UsePreviousRouteCheck;

    /// Marks, for every box, the panels that another output of the mode already has.
    void RefreshTakenMarks(const ModeRecord& mode);
    /// Names the outputs.
    void ShowNames(const Names& names);

  Q_SIGNALS:
    /// A list was edited; it may still be put in order afterwards.
    void ListEdited();
    /// A check box was clicked.
    void RouteEdited();
    /// A key was typed into a panel list, before it is checked.
    void KeyTyped();
    void LinkClicked();

  private:
    std::array<NameLabel*, outputCount> names_;
};

} // namespace vek
