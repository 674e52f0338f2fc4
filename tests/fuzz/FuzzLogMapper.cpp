// Any bytes as a table of included files and a compiler's log: the first byte tells how many rows, each row
// takes four bytes, the rest is the log. What comes out is made into messages.
#include "FuzzTarget.h"
#include "core/Stages.h"
#include "platform/CodePage.h"
#include "render/source/LogMapping.h"

using namespace pixelgrove;

// Four bytes: name, depth, first line, lines.
static const std::string kRows("\x04\x00\x00\x01\x28\x01\x00\x29\x0a\x07\x00\x33\x28\x08\x01\x3c\x0a", 17);

const std::vector<std::string>& FuzzSeeds() {
    static const std::vector<std::string> seeds = {
        kRows + "0(57) : error C0000: syntax error, unexpected '}'\n0(42) : error C1503: undefined \"x\"\n",
        kRows +
            "0:57(12): error: `iChannel1' undeclared\n0:60(3): warning: `x' unused\n0:2(1): "
            "preprocessor error: #error\n\n0:70(10): error: iChannel0 undefined\n",
        kRows + "ERROR: 0:12: 'x' : undeclared\n -1( +5 ) : z\n99999999999(-99999999999) : far\n",
    };
    return seeds;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const uint8_t* const end = data + size;
    IncludeContext context;
    if (data < end) {
        for (int rows = *data++ % (kMaxIncludeRows + 1); rows > 0 && end - data >= 4; --rows, data += 4) {
            const QString name = data[0] < kStageCount ? StageName(data[0]) : QString(data[0], u'(');
            context.includedFiles.push_back({name, data[1] % 4, data[2], data[2] + data[3]});
        }
    }
    QString log = FromCodePage(QByteArrayView(data, end - data));
    const QString mapped = MapShaderLog(context, log, QStringLiteral("Image"));
    FUZZ_CHECK(context.includedFiles.empty());

    // Each line of the log gives one line, and each goes into one of both texts.
    const qsizetype zero = log.indexOf(QChar(u'\0'));
    if (zero >= 0) log.truncate(zero);
    const qsizetype lines = log.count(u'\n') + (!log.isEmpty() && !log.endsWith(u'\n') ? 1 : 0);
    FUZZ_CHECK(mapped.count(u'\n') == lines);
    FUZZ_CHECK(mapped.isNull() == (lines == 0));
    const QString explained = ExplainUnsetChannels(mapped, QStringLiteral("Image"));
    FUZZ_CHECK(explained.count(u'\n') >= lines && explained.count(u'\n') <= lines + kChannelCount);
    const StageErrors errors = SplitErrors(explained);
    FUZZ_CHECK(TextOf(errors.common).size() + TextOf(errors.stage).size() == explained.size());
    for (const CompileMessage& message : MessagesOf(explained))
        FUZZ_CHECK(message.text.startsWith(message.place));
    return 0;
}
