// One project of a foreign form (ForeignForms.h) to the service's form.
//
// For this folder alone. Pure; any thread.
#pragma once

#include <QString>

#include "shadertoy/JsonObject.h"
#include "shadertoy/LoadWarnings.h"

namespace pixelgrove {

// True when the project, the value of "Shader", says something in the way of the pages that the reader of the
// service's form would miss.
bool HasForeignMarks(const JsonObject& shader);

// The root object of the service's form. userName stands in for one that the project's info lacks. What is
// missing gets a value that changes nothing; keys that the form doesn't have are left out.
JsonObject ToServiceForm(const JsonObject& shader, const QString& userName, LoadWarnings& warnings);

}  // namespace pixelgrove
