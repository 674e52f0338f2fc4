#include "ui/text/UndoHistory.h"

#include <algorithm>

namespace pixelgrove {

void UndoHistory::Record(qsizetype position, const QString& removed, QStringView inserted) {
    redo_.clear();
    Change* last = undo_.empty() ? nullptr : &undo_.back();
    const bool typed = inserted.size() == 1 && inserted[0] != u'\n';
    const bool erased = inserted.isEmpty() && removed.size() == 1 && removed[0] != u'\n';
    if (last && typed && removed.isEmpty() && open_ == Run::Typing &&
        position == last->position + last->length) {
        ++last->length;
        return;
    }
    if (last && erased && open_ != Run::Typing && open_ != Run::None) {
        if (position == last->position && open_ != Run::Erasing) {
            last->text.append(removed);
            open_ = Run::Deleting;
            return;
        }
        if (position + 1 == last->position && (open_ == Run::Erasing || last->text.size() == 1)) {
            last->text.prepend(removed);
            --last->position;
            open_ = Run::Erasing;
            return;
        }
    }
    undo_.push_back({position, inserted.size(), removed});
    if (undo_.size() > kMaxSteps) undo_.erase(undo_.begin());
    // One erased character may become a run in either direction.
    open_ = typed ? Run::Typing : erased ? Run::Deleting : Run::None;
}

void UndoHistory::Note(qsizetype position, qsizetype removed, qsizetype inserted) {
    Move(undo_, position, removed, inserted);
    Move(redo_, position, removed, inserted);
}

void UndoHistory::Clear() {
    undo_.clear();
    redo_.clear();
    open_ = Run::None;
}

std::optional<UndoHistory::Change> UndoHistory::Undo(QStringView text) {
    open_ = Run::None;
    return Take(undo_, redo_, text);
}

std::optional<UndoHistory::Change> UndoHistory::Redo(QStringView text) {
    open_ = Run::None;
    return Take(redo_, undo_, text);
}

void UndoHistory::Move(std::vector<Change>& steps, qsizetype position, qsizetype removed,
                       qsizetype inserted) {
    // From the newest step, whose place is one of the present text, back through the texts before each step.
    for (size_t i = steps.size(); i-- > 0;) {
        Change& step = steps[i];
        const qsizetype end = step.position + step.length;
        if (position >= end) {
            position += step.text.size() - step.length;
        } else if (position + removed <= step.position) {
            step.position += inserted - removed;
        } else if (position >= step.position && position + removed <= end) {
            // It goes when the step is taken back, so older texts never had it.
            step.length += inserted - removed;
            return;
        } else {
            steps.erase(steps.begin(), steps.begin() + ptrdiff_t(i) + 1);
            return;
        }
    }
}

std::optional<UndoHistory::Change> UndoHistory::Take(std::vector<Change>& from, std::vector<Change>& to,
                                                     QStringView text) {
    if (from.empty()) return std::nullopt;
    Change change = std::move(from.back());
    from.pop_back();
    // A step from outside the text would mean that an edit was never told of.
    change.position = std::clamp<qsizetype>(change.position, 0, text.size());
    change.length = std::clamp<qsizetype>(change.length, 0, text.size() - change.position);
    to.push_back(
        {change.position, change.text.size(), text.sliced(change.position, change.length).toString()});
    return change;
}

}  // namespace pixelgrove
