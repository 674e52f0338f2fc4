// RecoveryCopy: what is edited and not saved, to and from the bytes of a recovery copy.
//
// A JSON form of its own, in UTF-8, since the project file's loses something: characters that the code page
// lacks, names that channels have no word for. Every code unit of a text survives, every setting of a channel
// too; pictures and volumes are kept by their path and loaded again. What the project was loaded or saved as
// is not in it.
#pragma once

#include <QByteArray>
#include <QStringList>
#include <optional>

#include "core/EditingForm.h"

namespace pixelgrove {

struct RecoveryCopy {
    EditedProject project;
    std::optional<EditedProject> previous;  // what "Restore Previous Project" would bring back
};

// Pure; any thread. Empty when memory is short.
QByteArray WriteRecoveryCopy(const RecoveryCopy& copy);
// Nothing for bytes that aren't such a copy. A value that is out of its range is left out, so that no text is
// lost for it. The projects have no pixels, and count as differing from any file. Pure; any thread.
std::optional<RecoveryCopy> ReadRecoveryCopy(QByteArrayView bytes);

// What the editing form holds now. Main thread.
RecoveryCopy TakeRecoveryCopy(const EditingForm& form);
// Puts the copy in the place of what the form holds and loads the media of its channels. Returns a sentence
// for each that the shown project can't get. Main thread.
QStringList ShowRecoveryCopy(EditingForm& form, RecoveryCopy copy);

}  // namespace pixelgrove
