// A shared library that is loaded at the first need, because most runs of the program never call it: each one
// that is linked costs every start time and memory, and makes the loader's work for all others longer.
//
// Any thread, one object by one thread at a time.
#pragma once

#include <QString>

namespace pixelgrove {

class LateLibrary {
  public:
    // By the name under which the system's loader finds it. What is loaded stays to the process's end.
    explicit LateLibrary(const char* name);

    // The function of that name, or null, and then the library isn't Complete.
    template <typename Function>
    void Find(const char* name, Function*& function) {
        function = reinterpret_cast<Function*>(Address(name));
    }

    // It is there, with all that was looked for.
    bool IsComplete() const { return problem_.isEmpty(); }
    // What the loader said of the first thing that isn't there.
    const QString& Problem() const { return problem_; }

  private:
    void* Address(const char* name);

    void* library_;
    QString problem_;
};

}  // namespace pixelgrove
