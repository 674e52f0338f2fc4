// Any bytes as shader texts. The record separator (0x1e) parts them: the Image text, the Common text, then
// texts of in-memory files "a", "b", and so on, which a second expansion uses. One file lies on the disk.
#include <QTemporaryDir>

#include "FuzzTarget.h"
#include "platform/Files.h"
#include "render/source/SourceAssembly.h"

using namespace pixelgrove;

const std::vector<std::string>& FuzzSeeds() {
    static const std::vector<std::string> seeds = {
        "void mainImage(out vec4 c, in vec2 p)\n{\n    c = vec4(1.0); // red\n}\n\x1e"
        "/* shared */\r\nfloat f() { return 1.0; }\r\n",
        "#include \"disk\"\n#include \"common\"\n#include \"Common\"\n/*\n#include \"disk\"\n*/\nx\x1e"
        "c\n#include \"Image\"\n",
        "#include \"a\"\n#include \"b\"\nend\x1e\x1e"
        "1\n#include \"b\"\n2\n\x1e"
        "3\n#include \"c\" // x\n4\x1e"
        "5",
        "#include \"a\"\n#include \"A\"\n\x1e\x1e#include \"A\"\n#include \"a\"\n#include \"disk\"\n",
    };
    return seeds;
}

namespace {

void CheckRows(const IncludeContext& context, int lastLine) {
    FUZZ_CHECK(context.includedFiles.size() <= size_t(kMaxIncludeRows));
    for (const IncludedFile& row : context.includedFiles) {
        FUZZ_CHECK(row.depth >= 0 && row.depth < kMaxIncludeDepth);
        if (row.endLine == 0) continue;  // a file of no bytes has no span
        FUZZ_CHECK(row.firstLine >= 1 && row.firstLine <= row.endLine && row.endLine <= lastLine);
    }
}

void AssembleImage(const QList<QByteArray>& parts, const QString& folder) {
    ShaderProject project;
    project.stages[kStageImage].source = parts[0];
    if (parts.size() > 1) {
        project.stages[kStageCommon].kind = kStageCommon;
        project.stages[kStageCommon].source = parts[1];
    }
    IncludeContext context;
    context.searchFolder = folder;
    const auto assembled = AssembleStageSource(project, context, kStageImage, "#version 460");
    FUZZ_CHECK(context.virtualFiles.empty());
    if (!assembled) return;

    FUZZ_CHECK(!assembled->contains('\r') && !assembled->contains('\0') && assembled->endsWith('\n'));
    CheckRows(context, int(assembled->count('\n')) + 1);
    // An include in Common could have pulled the Image text to another place.
    if (!parts[0].contains("#include") && !project.stages[kStageCommon].source.contains("#include")) {
        QByteArray own = NormalizeLineEnds(parts[0]);
        while (own.endsWith('\n'))
            own.chop(1);
        FUZZ_CHECK(assembled->contains(own + "\nvoid main(void)\n"));
    }
}

void ExpandFiles(const QList<QByteArray>& parts, const QString& folder) {
    IncludeContext context;
    context.searchFolder = folder;
    for (qsizetype i = 2; i < parts.size(); ++i) {
        context.virtualFiles.push_back({QString(QChar(u'a' + char16_t(i - 2))), parts[i]});
    }
    QByteArray output;
    int lineCounter = 1;
    if (!ExpandIncludes(context, parts[0], output, lineCounter, 0)) return;
    FUZZ_CHECK(lineCounter == output.count('\n') + 1);
    CheckRows(context, lineCounter);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    static const QTemporaryDir folder;
    static const bool ready =
        WriteWholeFile(folder.filePath(QStringLiteral("disk")), "d1\n#include \"a\"\nd2\n");
    FUZZ_CHECK(ready);

    const QByteArray input(reinterpret_cast<const char*>(data), qsizetype(size));
    const QList<QByteArray> parts = input.split('\x1e');
    AssembleImage(parts, folder.path());
    ExpandFiles(parts, folder.path());
    return 0;
}
