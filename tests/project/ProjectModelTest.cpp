#include "project/ProjectModel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

#include "core/AppState.h"

namespace pixelgrove {
namespace {

using testing::ElementsAre;

class ProjectModelTest : public testing::Test {
  protected:
    void SetUp() override {
        ASSERT_TRUE(AllocateGlobals());
        App()->project.shaderModified = false;
        ClearProject(true);
    }
    void TearDown() override {
        ClearProject(false);
        FreeGlobals();
    }
    AppState& State() { return *App(); }
};

TEST_F(ProjectModelTest, ANewProjectIsTheImageStageAlone) {
    State().project.documents[kStageBufferB].text = QStringLiteral("x");
    State().project.channels[3][1].kind = kChannelTexture;
    AddStage(kStageBufferB);
    State().project.shaderModified = true;
    State().project.projectInfo.name = State().project.projectInfo.username = QStringLiteral("mine");
    ClearProject(true);

    EXPECT_THAT(AddableStages(), ElementsAre(1u, 2u, 3u, 4u, 5u, 6u));
    EXPECT_EQ(State().project.currentDocument, &State().project.documents[kStageImage]);
    EXPECT_EQ(State().project.currentDocument->text, DefaultSource(kStageImage));
    EXPECT_FALSE(State().project.documents[kStageBufferB].hasText);
    EXPECT_EQ(State().project.projectInfo.name + State().project.projectInfo.username, QString());
    EXPECT_EQ(State().project.channels[3][1].kind, kChannelUnused);
    EXPECT_TRUE(State().project.shaderModified);

    for (uint32_t id : {uint32_t(kStageNone), uint32_t(kStageImage), 8u})
        RemoveStage(id);
    EXPECT_TRUE(State().project.documents[kStageImage].hasText);
}

TEST_F(ProjectModelTest, TheMarkStandsWhileAStageDiffersFromWhatWasSaved) {
    AddStage(kStageBufferA);
    StageDocument& document = State().project.documents[kStageBufferA];
    auto& channels = State().project.channels[kStageBufferA];
    channels[1].kind = kChannelKeyboard;
    MarkProjectSaved();
    State().project.fileName.clear();
    const std::pair<std::function<void()>, bool> rows[] = {
        {[&] { document.text[0] = u'x'; }, true},
        {[&] { document.text.clear(); }, true},
        {[&] { channels[1].wrap = gl::kRepeat; }, true},
        {[&] { channels[1].sourceStage = kStageBufferB; }, true},
        {[&] { channels[1].sourceStage = 0; }, false},  // none, as -1
        {[&] { channels[1] = ChannelInput(); }, true},
        {[&] { channels[3].fileName = QStringLiteral("/x"); }, false},  // unused
        {[] { RemoveStage(kStageBufferA); }, true},
    };
    const StageDocument savedDocument = document;
    const auto savedChannels = channels;
    for (const auto& [change, marks] : rows) {
        change();
        OnStageChanged(kStageBufferA);
        EXPECT_EQ(App()->project.shaderModified, marks) << &change - &rows[0].first;
        document = savedDocument;
        channels = savedChannels;
        OnStageChanged(kStageBufferA);
        EXPECT_FALSE(App()->project.shaderModified);
    }
    EXPECT_EQ(State().project.fileName, QStringLiteral("Untitled"));
}

TEST_F(ProjectModelTest, WhatIsThrownAwayWithItsChangesComesBackOnce) {
    const auto open = [this] {
        ShaderProject project;
        project.version = 0.5f;
        project.stages[kStageImage].kind = project.stages[kStageCommon].kind = kStageImage;
        AdoptProject(project, QStringLiteral("/p/fog.json"));
        State().project.projectFile = State().project.fileName;
    };
    const auto type = [this](const QString& text) {
        SetDocumentText(*State().project.currentDocument, text);
        OnStageChanged(State().project.currentStage);
    };
    open();
    ClearProject(true);
    EXPECT_FALSE(RestorePreviousProject()) << "nothing was thrown away";
    EXPECT_EQ(State().project.projectFile, QString());
    open();
    SelectStage(kStageCommon);
    type(QStringLiteral("mine"));
    ClearProject(true);
    EXPECT_TRUE(App()->project.shaderModified) << "the mark survives New";
    open();  // in place of the untouched default, which is nothing to keep
    EXPECT_FALSE(App()->project.shaderModified);
    ASSERT_TRUE(RestorePreviousProject());
    EXPECT_EQ(State().project.currentStage, kStageCommon);
    EXPECT_EQ(State().project.currentDocument->text, QStringLiteral("mine"));
    EXPECT_THAT(AddableStages(), ElementsAre(2u, 3u, 4u, 5u, 6u));
    EXPECT_EQ(State().project.projectVersion, 0.5f);
    EXPECT_EQ(State().project.projectFile, QStringLiteral("/p/fog.json"));
    EXPECT_TRUE(App()->project.shaderModified);
    EXPECT_FALSE(RestorePreviousProject());
    type({});
    EXPECT_FALSE(App()->project.shaderModified) << "the file holds this";

    // Bringing one back throws nothing away either.
    type(QStringLiteral("first"));
    ClearProject(true);
    type(QStringLiteral("second"));
    for (const char* text : {"first", "second"}) {
        EXPECT_TRUE(RestorePreviousProject());
        EXPECT_EQ(State().project.currentDocument->text, QString::fromLatin1(text));
    }
}

TEST_F(ProjectModelTest, AdoptingTakesTextsAndChannelsOver) {
    ShaderProject project;
    project.info.name = QStringLiteral("Fog");
    ShaderStage& stage = project.stages[kStageImage];
    stage.kind = kStageImage;
    stage.source = "a\r\n\r\x80//";
    stage.channels[3].kind = kChannelTexture;
    stage.channels[3].faces[0] = CreateBitmap(2, 2, 32, false);
    project.stages[kStageBufferA].kind = kStageBufferA;  // an empty text is a text
    project.stages[kStageBufferC].kind = kStageBufferC;
    project.stages[kStageBufferC].source = "?";
    project.stages[kStageBufferC].text = QStringLiteral("\u4e2d\u2029");
    project.stages[kStageBufferB].source = "no kind";
    const BitmapRef face = stage.channels[3].faces[0];
    AddStage(kStageCubeA);
    App()->project.shaderModified = true;
    AdoptProject(project, QStringLiteral("/p/fog.json"));

    const StageDocument& image = State().project.documents[kStageImage];
    EXPECT_EQ(image.text, QStringLiteral("a\n\n\u20ac//"));
    EXPECT_EQ(image.commentMap, (std::vector<uint8_t>{0, 0, 0, 0, 1, 1}));
    EXPECT_EQ(State().project.channels[kStageImage][3].faces[0], face);
    EXPECT_EQ(stage.channels[3].faces[0], nullptr);
    EXPECT_TRUE(State().project.documents[kStageBufferA].hasText);
    EXPECT_EQ(State().project.documents[kStageBufferC].text, QStringLiteral("\u4e2d\n"));
    EXPECT_THAT(AddableStages(), ElementsAre(1u, 3u, 5u, 6u));
    EXPECT_EQ(State().project.currentStage, kStageImage);
    EXPECT_FALSE(App()->project.shaderModified);
    EXPECT_EQ(State().project.fileName, QStringLiteral("/p/fog.json"));

    for (const auto& [path, name] : {std::pair{QStringLiteral("XsXXDn"), "Fog.json"},  // the id of a service
                                     {QString(260, u'p'), ""}}) {
        AdoptProject(project, path);
        EXPECT_EQ(State().project.fileName, QLatin1String(name));
    }
}

}  // namespace
}  // namespace pixelgrove
