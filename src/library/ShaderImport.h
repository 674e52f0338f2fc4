// ShaderImport: puts the shaders that a text holds into the cache, step by step, so that whoever drives it
// can show how far it is and end it.
//
// A value of whoever imports; after MakeDataFolders; any one thread.
#pragma once

#include <QString>

#include "shadertoy/ForeignForms.h"

namespace pixelgrove {

class ShaderImport {
  public:
    // The shaders outlive this object.
    explicit ShaderImport(const std::vector<FoundShader>& shaders) : shaders_(shaders) {}

    bool IsDone() const { return next_ == shaders_.size(); }
    // Keeps some more, for about that long; at least one.
    void GoOn(qint64 milliseconds);
    // A line for the user: how far it is, or how it ended, with the reason for the first one left out.
    QString Outcome() const;

  private:
    const std::vector<FoundShader>& shaders_;
    size_t next_ = 0;
    size_t kept_ = 0;
    QString firstProblem_;
};

}  // namespace pixelgrove
