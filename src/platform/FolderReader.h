// FolderReader: reads many files of one folder, one after the other, each into the same memory. For small
// files in great numbers, where opening and clearing memory would take longer than reading.
//
// Any one thread.
#pragma once

#include <QByteArrayView>
#include <QString>
#include <optional>
#include <vector>

#include "platform/Descriptor.h"

namespace pixelgrove {

class FolderReader {
  public:
    // A folder that can't be opened has no files.
    explicit FolderReader(const QString& folder);

    // All bytes of the plain file of that name, as the system has it. They are there until the next call.
    // Nothing when the file can't be read or has more than maxBytes.
    std::optional<QByteArrayView> Read(const char* name, size_t maxBytes);

  private:
    bool Fill(int file, size_t maxBytes, size_t& length);

    Descriptor folder_;
    std::vector<char> buffer_;
};

}  // namespace pixelgrove
