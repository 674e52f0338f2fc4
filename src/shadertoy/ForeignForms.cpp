#include "shadertoy/ForeignForms.h"

#include <optional>
#include <utility>

#include "core/ShaderProject.h"
#include "platform/CodePage.h"
#include "platform/TextScan.h"
#include "shadertoy/ForeignProject.h"
#include "shadertoy/JsonText.h"
#include "shadertoy/ProjectJson.h"
#include "shadertoy/ProjectJsonParts.h"

namespace pixelgrove {
namespace {

constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";

QByteArray FileBytes(const QString& json) {
    return ToCodePage(WithEscapes(json));
}

QString Label(const JsonObject& shader, QStringView key) {
    const std::optional<JsonObject> info = shader.GetNamedObject(u"info");
    const QString text = info ? info->GetNamedString(key).value_or(QString()) : QString();
    return UntilZero(text).left(kMaxFoundNameUnits);
}

// A project of any form with its root key or without.
std::optional<JsonObject> ProjectIn(const JsonObject& object) {
    if (std::optional<JsonObject> wrapped = object.GetNamedObject(u"Shader")) return wrapped;
    if (object.GetNamedArray(u"renderpass")) return object;
    return std::nullopt;
}

FoundShader Converted(const JsonObject& shader, const QString& userName) {
    LoadWarnings warnings;
    const JsonObject root = ToServiceForm(shader, userName, warnings);
    const JsonObject converted = root.GetNamedObject(u"Shader").value_or(JsonObject());
    return {Label(converted, u"id"), Label(converted, u"name"), FileBytes(root.Stringify()),
            warnings.Lines()};
}

void TakeList(const JsonArray& list, const QString& userName, FoundShaders& found) {
    for (qsizetype i = 0; i < list.Size(); ++i) {
        const std::optional<JsonObject> element = list.GetObjectAt(i);
        const std::optional<JsonObject> shader = element ? ProjectIn(*element) : std::nullopt;
        if (!shader) continue;
        if (qsizetype(found.shaders.size()) < kMaxFoundShaders) {
            found.shaders.push_back(Converted(*shader, userName));
        } else {
            ++found.leftOut;
        }
    }
    if (!found.shaders.empty()) found.form = TextForm::Foreign;
}

// The one shader of a text in the service's form, without its bytes.
std::optional<FoundShader> FindServiceForm(const QString& text) {
    const std::optional<JsonObject> root = JsonObject::Parse(text);
    const std::optional<JsonObject> shader = root ? root->GetNamedObject(u"Shader") : std::nullopt;
    if (!shader || HasForeignMarks(*shader)) return std::nullopt;
    return FoundShader{Label(*shader, u"id"), Label(*shader, u"name"), {}, {}};
}

FoundShaders OneShader(TextForm form, FoundShader shader) {
    FoundShaders found;
    found.form = form;
    found.shaders.push_back(std::move(shader));
    return found;
}

FoundShaders FindForeignForm(const QString& text) {
    FoundShaders found;
    if (const std::optional<JsonArray> list = JsonArray::Parse(text)) {
        TakeList(*list, {}, found);
        return found;
    }
    const std::optional<JsonObject> root = JsonObject::Parse(text);
    if (!root) return found;
    if (const std::optional<JsonObject> shader = ProjectIn(*root))
        return OneShader(TextForm::Foreign, Converted(*shader, {}));
    if (const std::optional<JsonArray> list = root->GetNamedArray(u"shaders"))
        TakeList(*list, root->GetNamedString(u"userName").value_or(QString()), found);
    return found;
}

bool IsWordUnit(QChar unit) {
    return unit.unicode() < 0x80 && (unit.isLetterOrNumber() || unit == u'_');
}

// Where the comment that begins there ends; the position itself where none begins.
qsizetype BehindComment(QStringView text, qsizetype position) {
    const QStringView rest = text.sliced(position);
    const bool isLine = rest.startsWith(QLatin1String("//"));
    if (!isLine && !rest.startsWith(QLatin1String("/*"))) return position;
    const qsizetype end = isLine ? text.indexOf(u'\n', position) : text.indexOf(u"*/", position + 2);
    return end < 0 ? text.size() : end + (isLine ? 1 : 2);
}

// A mainImage with its parenthesis, outside comments, in a text that begins neither as JSON nor as markup.
bool IsMainImageText(QStringView text) {
    if (text.contains(QChar(u'\0'))) return false;
    const QStringView trimmed = text.trimmed();
    if (trimmed.isEmpty() || QStringView(u"{[<").contains(trimmed.front())) return false;
    constexpr QStringView kName = u"mainImage";
    for (qsizetype i = 0; i < text.size();) {
        if (const qsizetype behind = BehindComment(text, i); behind > i) {
            i = behind;
            continue;
        }
        if (!IsWordUnit(text[i])) {
            ++i;
            continue;
        }
        const qsizetype begin = i;
        while (i < text.size() && IsWordUnit(text[i]))
            ++i;
        if (text.sliced(begin, i - begin) != kName) continue;
        qsizetype next = i;
        SkipSpace(text, next);
        if (SkipChar(text, next, u'(')) return true;
    }
    return false;
}

FoundShaders FindGlsl(const QString& text) {
    if (!IsMainImageText(text)) return {};
    ShaderProject project;
    project.stages[kStageImage].kind = kStageImage;
    project.stages[kStageImage].source = ToCodePage(text);
    return OneShader(TextForm::Glsl, {{}, {}, FileBytes(WriteProjectJson(project)), {}});
}

}  // namespace

FoundShaders FindShaders(QByteArrayView bytes) {
    if (bytes.size() > kMaxJsonUnits) return {};
    if (bytes.startsWith(kByteOrderMark)) return FindShadersInText(QString::fromUtf8(bytes));
    const std::optional<QByteArrayView> json = CheckJsonText(bytes);
    if (!json) return FindGlsl(FromCodePage(bytes));
    const QString text = FromCodePage(*json);
    if (std::optional<FoundShader> shader = FindServiceForm(text)) {
        shader->json = bytes.toByteArray();
        return OneShader(TextForm::Service, std::move(*shader));
    }
    const bool isUtf8 = QByteArray::fromRawData(json->data(), json->size()).isValidUtf8();
    return FindForeignForm(isUtf8 ? QString::fromUtf8(*json) : text);
}

FoundShaders FindShadersInText(const QString& text) {
    if (text.size() > kMaxJsonUnits) return {};
    const bool hasMark = text.startsWith(QChar(QChar::ByteOrderMark));
    const QString plain = hasMark ? text.mid(1) : text;
    const QByteArray utf8 = plain.toUtf8();
    const std::optional<QByteArrayView> json = CheckJsonText(utf8);
    if (!json) return FindGlsl(plain);
    const QString checked = QString::fromUtf8(*json);
    if (std::optional<FoundShader> shader = FindServiceForm(checked)) {
        shader->json = FileBytes(checked);
        return OneShader(TextForm::Service, std::move(*shader));
    }
    return FindForeignForm(checked);
}

}  // namespace pixelgrove
