// UndoHistory: what the user can take back, at most 100 steps, beside edits that can't be taken back.
//
// Whoever edits a text tells of each edit. Edits by the user are recorded and can be undone and redone. Edits
// that the editor makes by itself, as indentation, are only noted: recorded steps then move with the text
// around them, and undoing a step restores just what it had replaced. Positions are UTF-16 code units of the
// text as it is when the function is called. Not locked: one thread at a time.
#pragma once

#include <QString>
#include <optional>
#include <vector>

namespace pixelgrove {

class UndoHistory {
  public:
    static constexpr size_t kMaxSteps = 100;

    // Replace length code units from position by text.
    struct Change {
        qsizetype position;
        qsizetype length;
        QString text;
    };

    // The user put inserted in the place of removed. Characters typed or erased one by one in one place make
    // one step, as far as no line end is among them. The oldest step above kMaxSteps is forgotten.
    void Record(qsizetype position, const QString& removed, QStringView inserted);
    // The next edit starts a step of its own.
    void EndStep() { open_ = Run::None; }
    // An edit that is not to be undone. Steps that it cuts into are forgotten, with all that are older.
    void Note(qsizetype position, qsizetype removed, qsizetype inserted);
    void Clear();

    bool CanUndo() const { return !undo_.empty(); }
    bool CanRedo() const { return !redo_.empty(); }
    size_t UndoStepCount() const { return undo_.size(); }

    // The change that takes the last step back, or does it again; from here on the history counts it as made.
    // text is the text before it. Nothing when there is no step.
    std::optional<Change> Undo(QStringView text);
    std::optional<Change> Redo(QStringView text);

  private:
    // What single characters the last step goes on taking.
    enum class Run { None, Typing, Erasing, Deleting };

    static void Move(std::vector<Change>& steps, qsizetype position, qsizetype removed, qsizetype inserted);
    static std::optional<Change> Take(std::vector<Change>& from, std::vector<Change>& to, QStringView text);

    std::vector<Change> undo_, redo_;  // the newest last
    Run open_ = Run::None;
};

}  // namespace pixelgrove
