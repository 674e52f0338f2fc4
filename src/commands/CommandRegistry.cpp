#include "commands/CommandRegistry.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace pixelgrove {

namespace {

// Empty for an empty function.
std::function<void(int)> WithoutId(std::function<void()> run) {
    if (!run) return {};
    return [run = std::move(run)](int) { run(); };
}

}  // namespace

bool CommandRegistry::Add(CommandRow row) {
    const auto next = std::ranges::upper_bound(rows_, row.first, {}, &CommandRow::first);
    const bool meetsNext = next != rows_.end() && next->first <= row.last;
    const bool isGood = row.run && row.first <= row.last && !meetsNext && !Find(row.first);
    assert(isGood);
    if (!isGood) return false;
    rows_.insert(next, std::move(row));
    return true;
}

bool CommandRegistry::Add(int id, std::function<void()> run) {
    return Add({.first = id, .last = id, .run = WithoutId(std::move(run))});
}

bool CommandRegistry::AddToggle(int id, std::function<void()> run, std::function<bool()> isOn) {
    return Add({.first = id,
                .last = id,
                .run = WithoutId(std::move(run)),
                .isTicked = [isOn = std::move(isOn)](int) { return isOn(); }});
}

const CommandRow* CommandRegistry::Find(int id) const {
    const auto behind = std::ranges::upper_bound(rows_, id, {}, &CommandRow::first);
    if (behind == rows_.begin()) return nullptr;
    const CommandRow& row = *(behind - 1);
    return id <= row.last ? &row : nullptr;
}

CommandState CommandRegistry::StateOf(int id) const {
    const CommandRow* row = Find(id);
    if (!row) return {};
    return {!row->isAvailable || row->isAvailable(id), row->isTicked && row->isTicked(id)};
}

bool CommandRegistry::Run(int id) const {
    if (!StateOf(id).isAvailable) return false;
    Find(id)->run(id);
    return true;
}

}  // namespace pixelgrove
