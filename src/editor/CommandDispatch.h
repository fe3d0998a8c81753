// What each toolbar command does.
#pragma once

#include "device/EditorServices.h"
#include "link/DeviceTypes.h"
#include "model/Config.h"

#include <optional>
#include <string_view>

class QWidget;

namespace vek {

class ExportCommands;
class FileCommands;
class ModelView;
class PortTurns;
class WindowMessages;

class CommandDispatch {
  public:
    /// All must outlive this object; `window` is the parent of the boxes.
    CommandDispatch(QWidget& window, ModelView& view, FileCommands& files, ExportCommands& exports,
                    const EditorServices& services, PortTurns& turns, const DeviceTypeList& types,
                    WindowMessages& messages);

    /// Stores and shows the view, then runs the command with this key (upper case); any other key does
    /// nothing more. Run-time errors end the command with a message.
    void DispatchCommand(std::string_view key);

    /// The configuration that a device took last since the start, null for none.
    const MatrixConfig* LastProgrammed() const { return programmed_ ? &*programmed_ : nullptr; }

  private:
    void Run(std::string_view key);
    void ResetModeToDefault();
    void GroupOutputs();
    void SetBaseAddress();
    void Download();
    void About();

    QWidget& window_;
    ModelView& view_;
    FileCommands& files_;
    ExportCommands& exports_;
    const EditorServices& services_;
    PortTurns& turns_;
    const DeviceTypeList& types_;
    WindowMessages& messages_;
    std::optional<MatrixConfig> programmed_;
};

} // namespace vek
