// Any bytes as a project file: reading refuses or succeeds, and what was read can be written and read again
// with the same stages.
#include "FuzzTarget.h"
#include "platform/CodePage.h"
#include "shadertoy/ProjectJson.h"

using namespace pixelgrove;

const std::vector<std::string>& FuzzSeeds() {
    static const std::vector<std::string> seeds = {
        R"({"Shader":{"ver":"0.1","info":{"id":"abcdef","date":"1400000000","viewed":12,"name":"Waves",)"
        R"("username":"someone","description":"two\nlines","likes":3,"published":3,"flags":0,"usePreview":0,)"
        R"("tags":["2d","wave"],"hasliked":0},"renderpass":[{"inputs":[{"id":257,"src":"/media/a/x.jpg",)"
        R"("ctype":"texture","channel":0,"sampler":{"filter":"mipmap","wrap":"repeat","vflip":"true",)"
        R"("srgb":"false","internal":"byte"},"published":1},{"id":33,"src":"/presets/tex00.jpg",)"
        R"("ctype":"keyboard","channel":3,"sampler":{"filter":"nearest","wrap":"clamp","vflip":"false",)"
        R"("srgb":"false","internal":"byte"}}],"outputs":[{"id":37,"channel":0}],)"
        R"("code":"void mainImage(out vec4 c, in vec2 p)\n{\n    c = vec4(1.0);\n}","name":"Image",)"
        R"("description":"","type":"image"}]}})",
        R"({"Shader":{"ver":"0.1","info":{"id":"x","date":"0","viewed":0,"name":"n","username":"u",)"
        R"("description":"","likes":0,"published":0,"flags":0,"usePreview":0,"tags":[],"hasliked":0},)"
        R"("renderpass":[{"inputs":[],"outputs":[],"code":"a","name":"Common","description":"",)"
        R"("type":"common"},{"inputs":[{"id":257,"src":"/b","ctype":"buffer","channel":1,"sampler":{)"
        R"("filter":"linear","wrap":"mirror","vflip":"true","srgb":"false","internal":"byte"}}],)"
        R"("outputs":[{"id":257,"channel":0}],"code":"b","name":"Buf A","description":"",)"
        R"("type":"buffer"},{"inputs":[],"outputs":[],"code":"c","name":"Cube A","description":"",)"
        R"("type":"cubemap"},{"inputs":[],"outputs":[],"code":"d","name":"Sound","description":"",)"
        R"("type":"sound"}]}})",
    };
    return seeds;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QString text = FromCodePage(QByteArrayView(data, qsizetype(size)));
    ShaderProject project;
    LoadWarnings warnings;
    if (!ReadProjectJson(text, project, &warnings)) return 0;

    ShaderProject again;
    FUZZ_CHECK(ReadProjectJson(WriteProjectJson(project), again, &warnings));
    for (uint32_t id = kStageCommon; id <= kStageImage; ++id) {
        FUZZ_CHECK(again.stages[id].kind == project.stages[id].kind);
        FUZZ_CHECK(again.stages[id].source == project.stages[id].source);
    }
    return 0;
}
