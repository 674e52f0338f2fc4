#include "codecs/late/LateCodecs.h"

#include "platform/LateLibrary.h"

namespace pixelgrove {

namespace {

struct Loaded {
    const PictureCodecs* codecs = nullptr;
    QString missing;
};

Loaded Load() {
    LateLibrary module(kCodecsModule);
    GetPictureCodecs* get = nullptr;
    module.Find(kCodecsSymbol, get);
    if (get) return {get(), {}};
    return {nullptr, QStringLiteral("a part of the program is missing: %1").arg(module.Problem())};
}

const Loaded& Module() {
    static const Loaded module = Load();
    return module;
}

}  // namespace

DecodedPicture DecodePicture(const QByteArray& file, qint64 maxBytes) {
    if (Module().codecs) return Module().codecs->decode(file, maxBytes);
    DecodedPicture none;
    none.fault = PictureFault::NoCodecs;
    none.missing = Module().missing;
    return none;
}

QByteArray EncodePicture(const PictureRows& rows, PictureForm form, QString* reason) {
    if (Module().codecs) return Module().codecs->encode(rows, form, reason);
    if (reason) *reason = Module().missing;
    return {};
}

}  // namespace pixelgrove
