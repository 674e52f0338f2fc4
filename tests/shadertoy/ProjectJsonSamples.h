// Small builders of project text for the tests of reader and file loading.
#pragma once

#include <QString>

namespace pixelgrove {

// Replaces ' by " so that JSON is readable in a string literal.
inline QString Json(const char* text) {
    return QString::fromLatin1(text).replace(u'\'', u'"');
}

inline QString SampleInfo() {
    return Json(
        "{'id':'AbCd12','date':'1700000000','viewed':7,'name':'Waves','username':'ada',"
        "'description':'Deep water','likes':3,'published':1,'flags':32,'usePreview':1,"
        "'tags':['sea','blue'],'hasliked':1}");
}

inline QString ProjectText(const QString& passes, const QString& ver = QStringLiteral("\"0.1\""),
                           const QString& info = SampleInfo()) {
    return QStringLiteral("{\"Shader\":{\"ver\":%1,\"info\":%2,\"renderpass\":%3}}").arg(ver, info, passes);
}

// One pass with these inputs (the elements of the array).
inline QString Pass(const char* type, const char* name, const char* code, const QString& inputs = {}) {
    return QStringLiteral("{\"type\":\"%1\",\"name\":\"%2\",\"code\":\"%3\",\"inputs\":[%4]}")
        .arg(QString::fromLatin1(type), QString::fromLatin1(name), QString::fromLatin1(code), inputs);
}

inline QString SampleProject() {
    const QString input = Json(
        "{'id':257,'src':'/media/previz/buffer00.png','ctype':'buffer','channel':2,"
        "'sampler':{'filter':'nearest','wrap':'repeat','vflip':'true','srgb':'true','internal':'byte'}}");
    return ProjectText(QStringLiteral("[%1,%2]").arg(Pass("image", "Image", "void main(){}", input),
                                                     Pass("buffer", "Buf A", "\\u00e9\\n")));
}

}  // namespace pixelgrove
