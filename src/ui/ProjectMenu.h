// The commands of the file menu. Main thread.
#pragma once

namespace pixelgrove {

class CommandRegistry;
class ProjectCommands;
struct EditingForm;

// All of them outlive the registry.
void RegisterProjectCommands(CommandRegistry& commands, ProjectCommands& projects,
                             const EditingForm& project);

}  // namespace pixelgrove
