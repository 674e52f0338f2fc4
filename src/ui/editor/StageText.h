// StageText: what keeps a stage's document equal to the text that the editor shows of it, edit by edit, with
// the history of what the user did. It knows no view. Owned by the editor. Main thread.
#pragma once

#include <QObject>
#include <optional>
#include <span>

#include "core/EditingForm.h"
#include "ui/text/UndoHistory.h"

class QTextDocument;

namespace pixelgrove {

// One change of a stage's text. Positions are UTF-16 code units.
struct TextEdit {
    const StageDocument& stage;  // has the text after the edit
    qsizetype position;
    QString removed;  // what stood there before
    qsizetype added;  // code units that stand there now
};

class StageText : public QObject {
    Q_OBJECT

  public:
    // Follows the document, whose own history is off. It outlives this object.
    explicit StageText(QTextDocument& document);

    // From now on the edits of the document are the stage's, whose text it holds already. Undo begins anew.
    // A stage's text that the document can't hold as it is becomes what the document made of it.
    void Follow(StageDocument& stage);
    void Forget();
    // Null when none is followed.
    StageDocument* Stage() const { return stage_; }

    // Brings the stage's comment map up to its text. False when the text is empty or no stage is followed.
    bool RefreshCommentMap();

    // A part of the document's text, with every character that it has.
    QString Range(qsizetype position, qsizetype length) const;
    qsizetype Length() const;

    // Takes the last step of the user back, or does it again. The place behind what came; nothing without a
    // step.
    std::optional<qsizetype> Undo();
    std::optional<qsizetype> Redo();
    bool CanUndo() const { return history_.CanUndo(); }
    bool CanRedo() const { return history_.CanRedo(); }
    // The user's next edit is a step of its own.
    void EndStep() { history_.EndStep(); }
    // One step for undo of all these edits, ascending, in positions of the text before all of them.
    void Apply(std::span<const UndoHistory::Change> edits);
    // Edits that undo knows nothing of, ascending, in positions of the text before all of them.
    void ApplyUnrecorded(std::span<const UndoHistory::Change> edits);

  Q_SIGNALS:
    // Told within the edit: who hears of it leaves the document alone.
    void Edited(const pixelgrove::TextEdit& edit);

  private:
    // Whose the edit is that the document is about to report.
    enum class Author { User, Unrecorded, History };

    void OnContentsChange(int position, int removed, int added);
    void ApplyAs(Author author, std::span<const UndoHistory::Change> edits);
    std::optional<qsizetype> Replay(const std::optional<UndoHistory::Change>& change);

    QTextDocument& document_;
    StageDocument* stage_ = nullptr;
    UndoHistory history_;
    Author author_ = Author::User;
    bool mapIsCurrent_ = false;
};

}  // namespace pixelgrove
