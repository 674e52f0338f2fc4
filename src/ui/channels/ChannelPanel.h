// ChannelPanel: the four channel groups of the main window: what each channel of the shown stage reads, and
// how it is sampled.
//
// Acts on the form's controls channelButtonN, channelThumbnailN, channelNameN, filterLabelN, filterComboN,
// wrapLabelN, wrapComboN, vflipCheckN. Filter, wrap and flip also reach the run that lives. Owned by the main
// window. Main thread, but for what Watch tells.
#pragma once

#include <QObject>
#include <array>
#include <functional>
#include <memory>

#include "core/Stages.h"
#include "windows/widgets/UserDialogs.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QWidget;

namespace pixelgrove {

class ChannelThumbnail;
class PreviewMailbox;
struct AppState;
struct Player;
struct RenderRun;

class ChannelPanel : public QObject {
    Q_OBJECT

  public:
    // Fills the combos and connects all controls. A press on a channel's button runs its command. What is
    // handed in by reference outlives this object.
    ChannelPanel(QWidget& form, AppState& app, const Player& player, const UserDialogs& dialogs,
                 std::function<void(int commandId)> runCommand);

    // Shows the channels of the shown stage; without a live run, or with previews off, the thumbnails
    // of buffers go back to their letters.
    void Refresh();
    // The menu of channel 0..3 of the shown stage, at the mouse. A choice changes that channel.
    void PopUpMenu(uint32_t channel);
    // Has the run leave its previews here, from its own thread, and tells it which stage is shown. Before the
    // run's thread starts. The run ends, or is abandoned, before this object goes.
    void Watch(RenderRun& run);

  protected:
    // Previews have come.
    bool event(QEvent* event) override;

  private:
    struct Group {
        QPushButton* button = nullptr;
        ChannelThumbnail* thumbnail = nullptr;
        QLabel* name = nullptr;
        std::array<QWidget*, 5> sampling{};  // what only a channel in use has
        QComboBox* filter = nullptr;
        QComboBox* wrap = nullptr;
        QCheckBox* vflip = nullptr;
    };

    Group FindGroup(uint32_t channel) const;
    void Connect(uint32_t channel);
    void ShowGroup(const Group& group, const ChannelInput& channel, bool hasInputs);
    void WriteThrough(uint32_t channel);
    void TakeMedium(uint32_t channel, const QString& path);
    void ShowPreviews();
    ChannelInput& ShownChannel(uint32_t channel) const;

    QWidget& form_;
    AppState& app_;
    const Player& player_;
    const UserDialogs& dialogs_;
    const std::function<void(int commandId)> runCommand_;
    std::array<Group, kChannelCount> groups_;
    std::shared_ptr<PreviewMailbox> previews_;  // of the last run
    uint32_t shownStage_ = 0;
};

}  // namespace pixelgrove
