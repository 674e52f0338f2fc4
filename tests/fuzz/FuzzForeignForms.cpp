// Any bytes as a project in whatever form: what is found in them can be read, and has the service's form
// then.
#include "FuzzTarget.h"
#include "platform/CodePage.h"
#include "shadertoy/ForeignForms.h"
#include "shadertoy/ProjectJson.h"

using namespace pixelgrove;

const std::vector<std::string>& FuzzSeeds() {
    static const std::vector<std::string> seeds = {
        R"({"ver":"0.1","info":{"id":"abCD12","date":"14","viewed":12,"name":"Waves","username":"someone",)"
        R"("description":"d","likes":3,"published":3,"tags":["2d","wave"]},"renderpass":[)"
        R"({"outputs":[{"channel":0,"id":"4dfGRr"}],"inputs":[{"channel":0,"type":"buffer","id":"4dXGR8",)"
        R"("filepath":"/media/previz/buffer00.png","sampler":{"filter":"linear","wrap":"clamp",)"
        R"("vflip":"true","srgb":"false","internal":"byte"}},{"channel":1,"type":"cubemap","id":"4dX3Rr",)"
        R"("filepath":"/x"},{"channel":2,"type":"video","id":"q","filepath":"/v"}],"code":"void mainImage(",)"
        R"("name":"Image","description":"","type":"image"},{"outputs":[{"channel":0,"id":"XsXGR8"}],)"
        R"("inputs":[null],"code":"b","name":"odd","type":"buffer"},{"outputs":[{"id":"XsfGRr"}],"code":"s"}]})",
        R"({"userName":"u","date":"1","numShaders":2,"shaders":[{"renderpass":[{"type":"image","code":"i",)"
        R"("name":"Image"}],"info":{"id":"a1","name":"n"}},{"Shader":{"ver":"0.1","info":{"id":"b"},)"
        R"("renderpass":[]}}]})",
        R"([{"Shader":{"ver":0.1,"renderpass":[{"type":"buffer","outputs":[{"id":258}],"code":"c","inputs":[)"
        R"({"ctype":"buffer","id":"260","channel":"1"}]}]}}])",
        "// a comment\nvoid mainImage( out vec4 c, in vec2 p ) /* and one */\n{\n    c = vec4(1.0);\n}\n",
    };
    return seeds;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    const QByteArray bytes(reinterpret_cast<const char*>(data), qsizetype(size));
    const FoundShaders found = FindShaders(bytes);
    FUZZ_CHECK((found.form == TextForm::None) == found.shaders.empty());
    for (const FoundShader& shader : found.shaders) {
        if (found.form == TextForm::Service) {
            FUZZ_CHECK(shader.json == bytes);
            continue;
        }
        ShaderProject project;
        LoadWarnings warnings;
        FUZZ_CHECK(ReadProjectJson(FromCodePage(shader.json), project, &warnings));
        if (found.form == TextForm::Glsl) FUZZ_CHECK(project.stages[kStageImage].source == bytes);
        const FoundShaders again = FindShaders(shader.json);
        FUZZ_CHECK(again.form == TextForm::Service);
        FUZZ_CHECK(again.shaders[0].json == shader.json);
    }
    FindShadersInText(FromCodePage(bytes));
    return 0;
}
