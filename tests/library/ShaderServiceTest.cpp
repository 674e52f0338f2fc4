#include "library/ShaderService.h"

#include <gtest/gtest.h>
#include <sys/resource.h>

#include <QDir>
#include <QDirIterator>
#include <QImage>
#include <csignal>

#include "library/CacheNames.h"
#include "library/PageAddress.h"
#include "library/ShaderImport.h"
#include "platform/Files.h"
#include "shadertoy/ProjectJsonSamples.h"
#include "support/ScratchFolders.h"
#include "support/TestService.h"

namespace pixelgrove {
namespace {

QString Text(const char* text) {
    return QString::fromLatin1(text);
}

QString TextureInput(const char* src) {
    return Json("{'ctype':'texture','channel':0,'id':1,'src':'%1'}").arg(QLatin1String(src));
}

QByteArray ProjectWith(const QString& inputs) {
    return ProjectText(u'[' + Pass("image", "Image", "void mainImage(){}", inputs) + u']').toLatin1();
}

class ShaderServiceTest : public ::testing::Test {
  protected:
    static void SetUpTestSuite() {
        server_ = std::make_unique<test::TestService>();
        server_->Put("shaders/AbC.json", ProjectWith(TextureInput("/media/a/tex.png")) + " stray");
        server_->Put("shaders/abc.json", ProjectWith({}));
        server_->Put("shaders/other.json", "{}");
        server_->Put("searches/two+words", "{\"Shaders\":1,\"Results\":[\"AbC\"]}");
        QImage(5, 3, QImage::Format_RGB32).save(server_->FilePath("media/tex.png"));
    }
    static void TearDownTestSuite() { server_.reset(); }
    void SetUp() override {
        ASSERT_TRUE(server_->IsReady());
        MakeDataFolders();
    }

    // The server in one of its modes (service.py).
    ShaderService In(const char* mode, const FetchLimits& limits = {}) {
        const QString base = server_->Http() + u'/' + QLatin1String(mode);
        return {ChooseService(base, QString()), [this, limits](const QString& url) {
                    ++fetches_;
                    return WebClient(limits).Fetch(url);
                }};
    }
    QByteArray Cached(const char* name) const {
        return ReadWholeFile(CacheRoot() + u'/' + QLatin1String(name)).value_or("none");
    }
    // Every file below the data folder, hidden ones too, without the folder's path.
    QStringList Files() const {
        QStringList files;
        QDirIterator walk(folders_.Path("."), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (walk.hasNext())
            files += walk.next().section(u'/', -2);
        files.sort();
        return files;
    }

    static std::unique_ptr<test::TestService> server_;
    test::ScratchFolders folders_;
    int fetches_ = 0;
};

std::unique_ptr<test::TestService> ShaderServiceTest::server_;

TEST_F(ShaderServiceTest, AnswersAreKeptByteForByteAndNotAskedForAgain) {
    for (const char* mode : {"gzip", "hang"}) {  // the second can't answer
        const ShaderService service = In(mode);
        for (const char* id : {"AbC", "abc"}) {
            ShaderProject project;
            EXPECT_EQ(LoadProjectFromService(service, Text(id), project).status, ProjectFileStatus::Loaded);
            EXPECT_EQ(project.stages[kStageImage].channels[0].faces[0] != nullptr, id[0] == 'A');
        }
        const CachedAnswer found = CachedFetch(service, SearchItem(service.address, Text("two words")));
        EXPECT_EQ(found.bytes, "{\"Shaders\":1,\"Results\":[\"AbC\"]}") << qPrintable(found.problem);
    }
    EXPECT_EQ(fetches_, 4);
    EXPECT_EQ(Cached("Shaders/abc_5.json"), ProjectWith(TextureInput("/media/a/tex.png")) + " stray");
    EXPECT_EQ(Cached("Assets/tex.png"), ReadWholeFile(server_->FilePath("media/tex.png")));
    const QString search = Text("Searches/") + Base32Encode(u"two+words&key=qk4zvw") + Text(".json");
    EXPECT_EQ(Files(), (QStringList{Text("Assets/tex.png"), search, Text("Shaders/abc_0.json"),
                                    Text("Shaders/abc_5.json")}));
}

TEST_F(ShaderServiceTest, FailuresAreNamedAndLeaveNoFile) {
    FetchLimits limits;
    limits.silence = std::chrono::milliseconds(50);
    limits.bytes = 100'000;
    const std::pair<const char*, const char*> rows[] = {
        {"hang", "does not answer"},
        {"pause", "does not answer"},
        {"cut", "damaged or cut short"},
        {"corrupt", "damaged or cut short"},
        {"endless", "too large"},
        {"empty", "is empty"},
        {"tofile", "an address that is not followed"},
    };
    for (const auto& [mode, words] : rows) {
        ShaderProject project;
        project.version = 9.0f;
        const ProjectFileResult result = LoadProjectFromService(In(mode, limits), Text("abc"), project);
        EXPECT_EQ(result.status, ProjectFileStatus::Unreadable) << mode;
        EXPECT_TRUE(result.message.startsWith(Text("The shader \"abc\" can't be loaded: ")) &&
                    result.message.contains(Text(words)))
            << qPrintable(result.message);
        EXPECT_EQ(project.version, 9.0f);
    }
    EXPECT_EQ(Files(), QStringList());
    ShaderProject project;
    ShaderService nowhere = In("plain");
    nowhere.address = ChooseService(Text("ftp://h"), QString());
    EXPECT_TRUE(LoadProjectFromService(nowhere, Text("abc"), project)
                    .message.contains(Text("PIXELGROVE_SERVICE_URL")));
}

TEST_F(ShaderServiceTest, RefusalsStayUntilALookAtTheirInfoDeletesThem) {
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"refuse", "abc", "the service answers \"Invalid key\"; that answer is kept in \""},
        {"plain", "none", "the service answers \"Shader not found\"; that"},
        {"page", "x", "the answer of the service is no JSON text; that"},
    };
    for (const auto& [mode, id, words] : rows) {
        for (const char* now : {mode, "gzip"}) {  // from the service, then from the cache
            ShaderProject project;
            const ProjectFileResult result = LoadProjectFromService(In(now), Text(id), project);
            EXPECT_EQ(result.status, ProjectFileStatus::NotAProject);
            EXPECT_TRUE(result.message.contains(Text(words))) << qPrintable(result.message);
        }
        EXPECT_EQ(Files(), QStringList{Text("Shaders/%1_0.json").arg(Text(id))});
        ShaderInfo info;
        QString problem;
        EXPECT_FALSE(FetchShaderInfo(In("gzip"), Text(id), info, &problem));
        EXPECT_NE(problem, QString());
        EXPECT_EQ(Files(), QStringList());
    }
    ShaderInfo info;
    EXPECT_TRUE(FetchShaderInfo(In("plain"), Text("AbC"), info));
    EXPECT_EQ(info.name, Text("Waves"));
    EXPECT_EQ(info.size, uint32_t(ProjectWith(TextureInput("/media/a/tex.png")).size()) + 1);
    // No shader in it, and no refusal either.
    EXPECT_TRUE(FetchShaderInfo(In("plain"), Text("other"), info));
    EXPECT_EQ(info.id, Text("other"));
    ShaderProject project;
    EXPECT_TRUE(LoadProjectFromService(In("plain"), Text("other"), project)
                    .message.contains(Text("has nothing under this id")));
}

TEST_F(ShaderServiceTest, NamesFromOutsideStayInTheirFolder) {
    const ShaderService service = In("plain");
    for (const QString& name : {Text("../../x"), Text("..\\x"), Text(".."), Text("a\0b").append(QChar(0)),
                                Text("a\nb"), QString(255, u'a'), Text("")}) {
        ShaderInfo info;
        EXPECT_FALSE(FetchShaderInfo(service, name, info)) << qPrintable(name);
        EXPECT_FALSE(
            CachedFetch(service, MediumItem(service.address, u'/' + QString(name).replace(u'/', u'\\')))
                .problem.isEmpty());
    }
    EXPECT_EQ(CachedFetch(service, SearchItem(service.address, QString(200, u'a'))).problem,
              Text("the cache has no room for a name of that length"));
    EXPECT_EQ(fetches_, 0);
    EXPECT_EQ(MediumItem(service.address, Text("../../x")).path, CacheRoot() + Text("/Assets/x"));
}

TEST_F(ShaderServiceTest, ACacheThatCannotBeWrittenIsAFailure) {
    const auto load = [this] {
        ShaderProject project;
        return LoadProjectFromService(In("plain"), Text("abc"), project).message;
    };
    // A limit on the length of files stands in for a full disk.
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    rlimit old{};
    getrlimit(RLIMIT_FSIZE, &old);
    const rlimit limited{10, old.rlim_max};
    setrlimit(RLIMIT_FSIZE, &limited);
    const QString onFull = load();
    setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_TRUE(onFull.contains(Text("can't be stored in")) && onFull.endsWith(Text(": File too large.")))
        << qPrintable(onFull);
    EXPECT_EQ(Files(), QStringList());
    // Nor where no folder can be, which holds for root too.
    QDir(CacheRoot()).removeRecursively();
    EXPECT_TRUE(load().contains(Text("can't be stored in")));
}

TEST_F(ShaderServiceTest, MediaAreAskedForUntilTheServiceCannotBeReached) {
    server_->Put("project.json",
                 ProjectWith(TextureInput("/media/a/one.png") + u',' +
                             Json("{'ctype':'texture','channel':1,'id':1,'src':'two.png'},"
                                  "{'ctype':'texture','channel':2,'id':1,'src':'/x/one.png'},"
                                  "{'ctype':'buffer','channel':3,'id':257,'src':'/media/a/three.png'}")));
    const QString path = server_->FilePath("project.json");
    ShaderProject project;
    const ShaderService service = In("cut");
    ProjectFileResult result = LoadProjectFromService(service, path, project);
    EXPECT_EQ(result.status, ProjectFileStatus::Loaded);
    EXPECT_EQ(fetches_, 3);
    EXPECT_TRUE(
        result.warnings.value(1).contains(Text(", and the answer of \"127.0.0.1\" is damaged or cut short")))
        << qPrintable(result.warnings.join(u'\n'));
    FetchLimits limits;
    limits.silence = std::chrono::milliseconds(50);
    fetches_ = 0;
    result = LoadProjectFromService(In("hang", limits), path, project);
    EXPECT_EQ(fetches_, 1);
    EXPECT_EQ(result.warnings.filter(Text("does not answer")).size(), 3);
    EXPECT_EQ(Files(), QStringList());
    // An error page is an answer: it is kept, and no picture.
    result = LoadProjectFromService(In("plain"), path, project);
    EXPECT_EQ(Cached("Assets/one.png"), "<html>404</html>");
    EXPECT_EQ(result.warnings.filter(Text("is no picture")).size(), 3);
}

TEST_F(ShaderServiceTest, ImportedShadersAreAnsweredFromTheCache) {
    const QByteArray json = ProjectWith({});
    const std::vector<FoundShader> shaders = {{Text("AbCd12"), Text("good"), json, {}},
                                              {Text("../../x"), Text("bad"), json, {}},
                                              {{}, {}, json, {}},
                                              {QString(21, u'a'), {}, json, {}},
                                              {Text("AbCd12"), Text("newer"), json + ' ', {}}};
    ShaderImport import(shaders);
    import.GoOn(0);
    EXPECT_EQ(import.Outcome(), Text("Importing, 1 of 5..."));
    while (!import.IsDone())
        import.GoOn(0);
    EXPECT_EQ(import.Outcome(),
              Text("2 shaders are in the library now. Left out: \"bad\", as \"../../x\" is no id of "
                   "the service, and 2 more."));
    EXPECT_EQ(Files(), QStringList{Text("Shaders/abcd12_5.json")});
    EXPECT_EQ(Cached("Shaders/abcd12_5.json"), json + ' ');
    ShaderProject project;
    EXPECT_EQ(LoadProjectFromService(In("hang"), Text("AbCd12"), project).status, ProjectFileStatus::Loaded);
    EXPECT_EQ(fetches_, 0);
}

TEST(PageAddressTest, IdsInTexts) {
    const ServiceAddress service = ChooseService(Text("http://mirror:81/at"), {});
    const std::pair<const char*, const char*> rows[] = {
        {" https://www.shadertoy.com/view/AbC123?x#y\n", "AbC123"},
        {"shadertoy.com/view/AbC123", "AbC123"},
        {"http://mirror:81/at/view/x1", "x1"},
        {"AbC123", "AbC123"},
        {"secret1", ""},  // whatever it is, no id that the service gives
        {"AbC12!", ""},
        {"see https://www.shadertoy.com/view/AbC123", ""},
        {"https://elsewhere.com/view/AbC123", ""},
        {"file:///view/AbC123", ""},
        {"", ""},
    };
    for (const auto& [text, id] : rows)
        EXPECT_EQ(ShaderIdOfText(service, Text(text)), Text(id)) << text;
}

}  // namespace
}  // namespace pixelgrove
