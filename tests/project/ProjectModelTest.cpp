#include "project/ProjectModel.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>

#include "project/RunningForm.h"

namespace pixelgrove {
namespace {

using testing::ElementsAre;

class ProjectModelTest : public testing::Test {
  protected:
    void SetUp() override { ClearProject(form_, true); }

    EditingForm form_;
};

TEST_F(ProjectModelTest, ANewProjectIsTheImageStageAlone) {
    form_.documents[kStageBufferB].text = QStringLiteral("x");
    form_.channels[3][1].kind = kChannelTexture;
    AddStage(form_, kStageBufferB);
    form_.shaderModified = true;
    form_.projectInfo.name = form_.projectInfo.username = QStringLiteral("mine");
    ClearProject(form_, true);

    EXPECT_THAT(AddableStages(), ElementsAre(1u, 2u, 3u, 4u, 5u, 6u));
    EXPECT_EQ(form_.currentDocument, &form_.documents[kStageImage]);
    EXPECT_EQ(form_.currentDocument->text, DefaultSource(kStageImage));
    EXPECT_FALSE(form_.documents[kStageBufferB].hasText);
    EXPECT_EQ(form_.projectInfo.name + form_.projectInfo.username, QString());
    EXPECT_EQ(form_.channels[3][1].kind, kChannelUnused);
    EXPECT_TRUE(form_.shaderModified);

    for (uint32_t id : {uint32_t(kStageNone), uint32_t(kStageImage), 8u})
        RemoveStage(form_, id);
    EXPECT_TRUE(form_.documents[kStageImage].hasText);
}

TEST_F(ProjectModelTest, TheMarkStandsWhileAStageDiffersFromWhatWasSaved) {
    AddStage(form_, kStageBufferA);
    StageDocument& document = form_.documents[kStageBufferA];
    auto& channels = form_.channels[kStageBufferA];
    channels[1].kind = kChannelKeyboard;
    MarkProjectSaved(form_);
    form_.fileName.clear();
    const std::pair<std::function<void()>, bool> rows[] = {
        {[&] { document.text[0] = u'x'; }, true},
        {[&] { document.text.clear(); }, true},
        {[&] { channels[1].wrap = gl::kRepeat; }, true},
        {[&] { channels[1].sourceStage = kStageBufferB; }, true},
        {[&] { channels[1].sourceStage = 0; }, false},  // none, as -1
        {[&] { channels[1] = ChannelInput(); }, true},
        {[&] { channels[3].fileName = QStringLiteral("/x"); }, false},  // unused
        {[&] { RemoveStage(form_, kStageBufferA); }, true},
    };
    const StageDocument savedDocument = document;
    const auto savedChannels = channels;
    for (const auto& [change, marks] : rows) {
        change();
        OnStageChanged(form_, kStageBufferA);
        EXPECT_EQ(form_.shaderModified, marks) << &change - &rows[0].first;
        document = savedDocument;
        channels = savedChannels;
        OnStageChanged(form_, kStageBufferA);
        EXPECT_FALSE(form_.shaderModified);
    }
    EXPECT_EQ(form_.fileName, QStringLiteral("Untitled"));
}

TEST_F(ProjectModelTest, WhatIsThrownAwayWithItsChangesComesBackOnce) {
    const auto open = [this] {
        ShaderProject project;
        project.version = 0.5f;
        project.stages[kStageImage].kind = project.stages[kStageCommon].kind = kStageImage;
        AdoptProject(form_, project, QStringLiteral("/p/fog.json"));
        form_.projectFile = form_.fileName;
    };
    const auto type = [this](const QString& text) {
        SetDocumentText(*form_.currentDocument, text);
        OnStageChanged(form_, form_.currentStage);
    };
    open();
    ClearProject(form_, true);
    EXPECT_FALSE(RestorePreviousProject(form_)) << "nothing was thrown away";
    EXPECT_EQ(form_.projectFile, QString());
    open();
    SelectStage(form_, kStageCommon);
    type(QStringLiteral("mine"));
    ClearProject(form_, true);
    EXPECT_TRUE(form_.shaderModified) << "the mark survives New";
    open();  // in place of the untouched default, which is nothing to keep
    EXPECT_FALSE(form_.shaderModified);
    ASSERT_TRUE(RestorePreviousProject(form_));
    EXPECT_EQ(form_.currentStage, kStageCommon);
    EXPECT_EQ(form_.currentDocument->text, QStringLiteral("mine"));
    EXPECT_THAT(AddableStages(), ElementsAre(2u, 3u, 4u, 5u, 6u));
    EXPECT_EQ(form_.projectVersion, 0.5f);
    EXPECT_EQ(form_.projectFile, QStringLiteral("/p/fog.json"));
    EXPECT_TRUE(form_.shaderModified);
    EXPECT_FALSE(RestorePreviousProject(form_));
    type({});
    EXPECT_FALSE(form_.shaderModified) << "the file holds this";

    // Bringing one back throws nothing away either.
    type(QStringLiteral("first"));
    ClearProject(form_, true);
    type(QStringLiteral("second"));
    for (const char* text : {"first", "second"}) {
        EXPECT_TRUE(RestorePreviousProject(form_));
        EXPECT_EQ(form_.currentDocument->text, QString::fromLatin1(text));
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
    AddStage(form_, kStageCubeA);
    form_.shaderModified = true;
    AdoptProject(form_, project, QStringLiteral("/p/fog.json"));

    const StageDocument& image = form_.documents[kStageImage];
    EXPECT_EQ(image.text, QStringLiteral("a\n\n\u20ac//"));
    EXPECT_EQ(image.commentMap, (std::vector<uint8_t>{0, 0, 0, 0, 1, 1}));
    EXPECT_EQ(form_.channels[kStageImage][3].faces[0], face);
    EXPECT_EQ(stage.channels[3].faces[0], nullptr);
    EXPECT_TRUE(form_.documents[kStageBufferA].hasText);
    EXPECT_EQ(form_.documents[kStageBufferC].text, QStringLiteral("\u4e2d\n"));
    EXPECT_THAT(AddableStages(), ElementsAre(1u, 3u, 5u, 6u));
    EXPECT_EQ(form_.currentStage, kStageImage);
    EXPECT_FALSE(form_.shaderModified);
    EXPECT_EQ(form_.fileName, QStringLiteral("/p/fog.json"));

    for (const auto& [path, name] : {std::pair{QStringLiteral("XsXXDn"), "Fog.json"},  // the id of a service
                                     {QString(260, u'p'), ""}}) {
        AdoptProject(form_, project, path);
        EXPECT_EQ(form_.fileName, QLatin1String(name));
    }
}

TEST_F(ProjectModelTest, ValuesOfControlsAreInTheRunningFormAlone) {
    const auto controls = std::make_unique<ControlSet>();
    const QString line = QStringLiteral("#define A 1 // amount [0.0..1.0]");
    AddStage(form_, kStageCommon);
    SetDocumentText(form_.documents[kStageCommon], line);
    SetDocumentText(form_.documents[kStageImage], u'\n' + line);
    MakeRunningForm(form_, *controls);
    controls->defines[0].range.value = 0.75f;
    RunningForm form = MakeRunningForm(form_, *controls);
    EXPECT_TRUE(form.project.stages[kStageCommon].source.startsWith("#define A 0.75000 //"));
    EXPECT_TRUE(form.project.stages[kStageImage].source.startsWith("\n#define A 0.75000 //"));
    ASSERT_EQ(form.baked[kStageImage].size(), 1u);
    EXPECT_EQ(form.baked[kStageImage][0].line, 2);
    EXPECT_EQ(form.baked[kStageCommon][0].line, 1);
    EXPECT_EQ(MakeFileForm(form_).stages[kStageCommon].source, line.toLatin1());
    EXPECT_EQ(form_.documents[kStageCommon].text, line);

    // Another label in the same record sets it anew, in the order of the stages.
    AddStage(form_, kStageBufferA);
    SetDocumentText(form_.documents[kStageBufferA], QStringLiteral("#define B 1 // b [0.0..4.0]"));
    form = MakeRunningForm(form_, *controls);
    EXPECT_TRUE(form.project.stages[kStageCommon].source.startsWith("#define A 0.75000 //"));
    EXPECT_TRUE(form.project.stages[kStageBufferA].source.startsWith("#define B 2.00000 //"));
    EXPECT_TRUE(form.project.stages[kStageImage].source.startsWith("\n#define A 0.50000 //"));
}

}  // namespace
}  // namespace pixelgrove
