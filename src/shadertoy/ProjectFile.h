// Opening a project file: bytes from the disk to a project that is ready to be adopted or rendered.
//
// Any thread that owns the project; blocks while files are read and media fetched.
#pragma once

#include <QString>
#include <QStringList>

#include "core/ShaderProject.h"
#include "shadertoy/ForeignForms.h"
#include "shadertoy/ProjectMedia.h"

namespace pixelgrove {

enum class ProjectFileStatus { Loaded, Unreadable, TooLarge, NotAProject, NoImageStage, ManyShaders };

struct ProjectFileResult {
    ProjectFileStatus status = ProjectFileStatus::Unreadable;
    // A sentence for the user; empty with Loaded.
    QString message;
    // What was left out of a project that was read, and which media can't be used: a bounded number of
    // sentences of one line each.
    QStringList warnings;
    // False when something in the file was left out, so that the file holds more than the project, and when
    // it has another form than the one that projects are written in. Media are no part of the file.
    bool isComplete = true;
    // With ManyShaders, what there is to choose from.
    FoundShaders choices;
};

// Larger files are refused unread.
constexpr qint64 kMaxProjectFileBytes = qint64(64) << 20;

// Reads the file at path, which may have any form of ForeignForms.h, and opens the channels' media, sought
// also below the file's folder and asked of fetchMedium. The project is replaced with Loaded and NoImageStage
// (a project that can be edited but shows nothing); otherwise it stays as it was. What could be read of a
// damaged "renderpass" counts as loaded. Of several shaders none is loaded.
ProjectFileResult LoadProjectFile(const QString& path, ShaderProject& project,
                                  const FetchMedium& fetchMedium = {});

// The same for the bytes of a project that are there already. whatItIs names it in messages, as in
// `file "x.json"`; an empty folder is none.
ProjectFileResult LoadProjectBytes(QByteArrayView bytes, const QString& whatItIs, const QString& folder,
                                   ShaderProject& project, const FetchMedium& fetchMedium = {});

// The same for one of several shaders. It never counts as complete.
ProjectFileResult LoadFoundShader(const FoundShader& shader, const QString& whatItIs, const QString& folder,
                                  ShaderProject& project, const FetchMedium& fetchMedium = {});

}  // namespace pixelgrove
