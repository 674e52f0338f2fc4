// CommandRegistry: what each command id runs, and whether it can be run now.
//
// To add a command: give it an id in Commands.h and, for a menu, a row in MenuTable.cpp. In a file of its
// feature, Add a handler for the id, with a condition where it isn't always available and a tick where its
// entry shows one. Call that file's function where the main window fills its registry.
//
// Owned by the main window. Main thread.
#pragma once

#include <functional>
#include <vector>

namespace pixelgrove {

// What a menu shows of a command.
struct CommandState {
    bool isAvailable = false;
    bool isTicked = false;
};

// The ids first to last; their handler gets the one that was run.
struct CommandRow {
    int first = 0;
    int last = 0;
    std::function<void(int id)> run;
    std::function<bool(int id)> isAvailable = {};  // always, when empty
    std::function<bool(int id)> isTicked = {};     // never, when empty
};

class CommandRegistry {
  public:
    // A row without a handler, and one with an id that has a handler already, are faults of the program: a
    // failed assertion, and without assertions false, and nothing is added.
    bool Add(CommandRow row);
    bool Add(int id, std::function<void()> run);
    // A command that turns something on and off.
    bool AddToggle(int id, std::function<void()> run, std::function<bool()> isOn);

    // Runs the command. False, and nothing happens, for one without a handler and for one whose condition
    // doesn't hold.
    bool Run(int id) const;
    CommandState StateOf(int id) const;

  private:
    const CommandRow* Find(int id) const;

    std::vector<CommandRow> rows_;  // by first id
};

}  // namespace pixelgrove
