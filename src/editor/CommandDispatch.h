// What each toolbar command does.
#pragma once

#include "device/EditorServices.h"

#include <string_view>

class QWidget;

namespace vek {

class ExportCommands;
class FileCommands;
class ModelView;
class Programmer;
class WindowMessages;

class CommandDispatch {
  public:
    /// All must outlive this object; `window` is the parent of the boxes.
    CommandDispatch(QWidget& window, ModelView& view, FileCommands& files, ExportCommands& exports,
                    const EditorServices& services, Programmer& programmer, WindowMessages& messages);

    /// Stores and shows the view, then runs the command with this key (upper case); any other key does
    /// nothing more. Run-time errors end the command with a message.
    void DispatchCommand(std::string_view key);

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
    Programmer& programmer_;
    WindowMessages& messages_;
};

} // namespace vek
