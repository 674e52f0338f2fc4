#include "render/source/SourceAssembly.h"

#include <algorithm>

#include "platform/CodePage.h"
#include "platform/Files.h"
#include "render/source/SourceTexts.h"

namespace pixelgrove {
namespace {

constexpr QByteArrayView kIncludeWord("#include");
constexpr qsizetype kMaxQuotedDirective = 80;
static_assert(kMaxIncludeRows == 64 && kMaxIncludeDepth == 32 && kMaxAssembledBytes == 256 << 20,
              "messages name these numbers");

bool IsBlank(char c) {
    return c == ' ' || c == '\t';
}

QByteArrayView UpToZero(QByteArrayView text) {
    const qsizetype zero = text.indexOf('\0');
    return zero < 0 ? text : text.first(zero);
}

// The form in which every piece and every file goes into the output: LF line ends, exactly one at the end.
QByteArray AsPiece(QByteArrayView text) {
    QByteArray piece = NormalizeLineEnds(text);
    qsizetype length = piece.size();
    while (length > 0 && piece.at(length - 1) == '\n')
        --length;
    piece.truncate(length);
    piece.append('\n');
    return piece;
}

QByteArrayView SamplerTypeOf(uint32_t channelKind) {
    switch (channelKind) {
        case kChannelTexture:
        case kChannelBuffer:
        case kChannelKeyboard:
        case kChannelWebcam:
        case kChannelAudio:
            return "sampler2D";
        case kChannelCubeA:
        case kChannelCubemap:
            return "samplerCube";
        case kChannelVolume:
            return "sampler3D";
        default:
            return {};
    }
}

QByteArray BuildPrefix(QByteArrayView versionLine, const ShaderStage& stage) {
    QByteArray prefix;
    prefix.append(versionLine).append('\n').append(PrefixText());
    for (int i = 0; i < kChannelCount; ++i) {
        const QByteArrayView type = SamplerTypeOf(stage.channels[static_cast<size_t>(i)].kind);
        if (type.isEmpty()) continue;
        prefix.append("uniform ")
            .append(type)
            .append(" iChannel")
            .append(QByteArray::number(i))
            .append(";\n");
    }
    return prefix;
}

bool StartsWithIncludeWord(QByteArrayView text) {
    return text.size() > kIncludeWord.size() && text.startsWith(kIncludeWord) &&
           IsBlank(text.at(kIncludeWord.size()));
}

QByteArrayView SkipBlanks(QByteArrayView text) {
    qsizetype i = 0;
    while (i < text.size() && IsBlank(text.at(i)))
        ++i;
    return text.sliced(i);
}

// Whether a block comment is open behind this line, given whether one was open before it.
bool IsCommentOpenAfter(QByteArrayView line, bool open) {
    for (qsizetype i = 0; i + 1 < line.size(); ++i) {
        const char first = open ? '*' : '/';
        const char second = open ? '/' : '*';
        if (line.at(i) != first || line.at(i + 1) != second) continue;
        open = !open;
        ++i;  // the '*' of "/*" is not also that of "*/", nor the other way round
    }
    return open;
}

// A text under expansion.
struct Source {
    QString name;  // as messages name it
    QByteArrayView rest;
    int line = 1;  // of rest's first character

    void Skip(qsizetype length) {
        line += int(rest.first(length).count('\n'));
        rest = rest.sliced(length);
    }
    // "NAME(LINE): KIND: WHAT: the line itself".
    QString Message(const char* what) const {
        const qsizetype end = rest.indexOf('\n');
        const QByteArrayView directive =
            (end < 0 ? rest : rest.first(end))
                .first(std::min(end < 0 ? rest.size() : end, kMaxQuotedDirective));
        return QStringLiteral("%1(%2): %3: %4")
            .arg(name)
            .arg(line)
            .arg(QLatin1String(what), FromCodePage(directive).trimmed());
    }
};

bool Fail(IncludeContext& context, const Source& source, const char* what) {
    if (context.failure.isEmpty()) context.failure = source.Message(what);
    return false;
}

bool ExpandText(IncludeContext& context, Source source, QByteArray& output, int& lineCounter, int depth);

// source begins with an #include line. Expands its file and moves behind the line; false on failure.
bool ExpandIncludeLine(IncludeContext& context, Source& source, QByteArray& output, int& lineCounter,
                       int depth) {
    const QByteArrayView text = source.rest;
    const QByteArrayView argument = SkipBlanks(text.sliced(kIncludeWord.size()));
    // The closing quote is sought up to the end of the text, not of the line.
    const qsizetype closing = argument.startsWith('"') ? argument.indexOf('"', 1) : -1;
    if (closing < 0) return Fail(context, source, "error: the name of an #include stands in double quotes");
    if (closing - 1 > kMaxIncludeNameLength)
        return Fail(context, source, "error: the name of an #include is too long");
    const QString name = FromCodePage(argument.sliced(1, closing - 1));

    int entry = 0;
    bool error = false;
    bool missing = false;
    const std::optional<QByteArray> file = ResolveInclude(context, name, entry, error, &missing);
    if (error) return Fail(context, source, "error: more than 64 files are included");
    if (missing) context.missingFiles.append(source.Message("note: no file was found for this line"));
    if (file) {
        if (depth == kMaxIncludeDepth)
            return Fail(context, source, "error: more than 32 files include each other");
        // By index: the table may move while the file's own includes are expanded.
        const auto row = static_cast<size_t>(entry);
        context.includedFiles[row].depth = depth;
        context.includedFiles[row].firstLine = lineCounter;
        if (!ExpandText(context, {context.includedFiles[row].name, UpToZero(*file)}, output, lineCounter,
                        depth + 1)) {
            return false;
        }
        context.includedFiles[row].endLine = lineCounter;
    }
    const qsizetype behindQuote = text.size() - argument.size() + closing + 1;
    const qsizetype lineEnd = text.indexOf('\n', behindQuote);
    source.Skip(lineEnd < 0 ? text.size() : lineEnd + 1);
    return true;
}

bool ExpandText(IncludeContext& context, Source source, QByteArray& output, int& lineCounter, int depth) {
    bool inComment = false;
    while (!source.rest.isEmpty()) {
        const QByteArrayView text = source.rest;
        if (!inComment) {
            if (StartsWithIncludeWord(text)) {
                if (!ExpandIncludeLine(context, source, output, lineCounter, depth)) return false;
                continue;
            }
            // Refused rather than kept as text: the compiler would reject the directive anyway.
            if (IsBlank(text.front()) && StartsWithIncludeWord(SkipBlanks(text)))
                return Fail(context, source, "error: an #include stands at the start of its line");
        }
        const qsizetype lineEnd = text.indexOf('\n');
        const QByteArrayView line = text.first(lineEnd < 0 ? text.size() : lineEnd + 1);
        if (line.size() > kMaxAssembledBytes - output.size())
            return Fail(context, source, "error: the whole text is longer than 256 MB");
        output.append(line);
        if (lineEnd >= 0) ++lineCounter;
        inComment = IsCommentOpenAfter(line, inComment);
        source.Skip(line.size());
    }
    return true;
}

bool WasIncluded(const IncludeContext& context, const QString& name) {
    for (const IncludedFile& row : context.includedFiles) {
        if (row.name == name) return true;
    }
    return false;
}

const VirtualInclude* FindVirtual(const IncludeContext& context, const QString& name) {
    for (const VirtualInclude& file : context.virtualFiles) {
        if (file.name.compare(name, Qt::CaseInsensitive) == 0) return &file;
    }
    return nullptr;
}

}  // namespace

QByteArray NormalizeLineEnds(QByteArrayView source) {
    source = UpToZero(source);
    QByteArray result(source.size(), Qt::Uninitialized);
    char* out = result.data();
    const char* const end = source.data() + source.size();
    for (const char* in = source.data(); in < end; ++in) {
        if (*in != '\r' && *in != '\n') {
            *out++ = *in;
            continue;
        }
        const char partner = *in == '\r' ? '\n' : '\r';
        if (in + 1 < end && in[1] == partner) ++in;
        *out++ = '\n';
    }
    result.truncate(out - result.constData());
    return result;
}

std::optional<QByteArray> ResolveInclude(IncludeContext& context, const QString& name, int& entry,
                                         bool& error, bool* missing) {
    error = false;
    if (WasIncluded(context, name)) return std::nullopt;

    QString foundName = name;
    std::optional<QByteArray> text;
    if (const VirtualInclude* file = FindVirtual(context, name)) {
        text = file->text;
    } else {
        text = ReadWholeFile(name, kMaxIncludeFileBytes);
        if (!text && !context.searchFolder.isEmpty()) {
            foundName = NormalizePath(context.searchFolder + QLatin1Char('/') + name);
            if (WasIncluded(context, foundName)) return std::nullopt;
            text = ReadWholeFile(foundName, kMaxIncludeFileBytes);
        }
    }
    if (!text) {
        if (missing) *missing = true;
        return std::nullopt;
    }

    if (context.includedFiles.size() >= static_cast<size_t>(kMaxIncludeRows)) {
        error = true;
        return std::nullopt;
    }
    entry = static_cast<int>(context.includedFiles.size());
    context.includedFiles.push_back({foundName});
    if (text->isEmpty()) return std::nullopt;
    return AsPiece(*text);
}

bool ExpandIncludes(IncludeContext& context, QByteArrayView text, QByteArray& output, int& lineCounter,
                    int depth) {
    return ExpandText(context, {QString(), UpToZero(text)}, output, lineCounter, depth);
}

std::optional<QByteArray> AssembleStageSource(const ShaderProject& project, IncludeContext& context,
                                              uint32_t stage, QByteArrayView versionLine) {
    context.virtualFiles.clear();
    context.includedFiles.clear();
    context.failure.clear();
    context.missingFiles.clear();
    if (!IsRenderedStage(stage)) return std::nullopt;

    const ShaderStage& own = project.stages[stage];
    const ShaderStage& common = project.stages[kStageCommon];
    const QString ownName = StageName(stage);
    QByteArray driver;
    const auto addPiece = [&](const QString& name, QByteArrayView text) {
        context.virtualFiles.push_back({name, AsPiece(text)});
    };
    const auto includePiece = [&](const QString& name) {
        driver.append("#include \"").append(ToCodePage(name)).append("\"\n");
    };
    const QString prefixName = QStringLiteral("PREFIX");
    const QString footerName = QStringLiteral("SUFFIX");

    // The table is searched in this order, so the pieces' names win over a like-named user file.
    addPiece(prefixName, BuildPrefix(versionLine, own));
    addPiece(footerName, stage == kStageCubeA ? CubeFooterText() : ImageFooterText());
    includePiece(prefixName);
    if (common.kind == kStageCommon) {
        addPiece(StageName(kStageCommon), common.source);
        includePiece(StageName(kStageCommon));
    }
    addPiece(ownName, own.source);
    includePiece(ownName);
    includePiece(footerName);

    QByteArray output;
    int lineCounter = 1;
    const bool expanded = ExpandIncludes(context, driver, output, lineCounter, 0);
    context.virtualFiles.clear();
    if (!expanded) return std::nullopt;
    return output;
}

}  // namespace pixelgrove
