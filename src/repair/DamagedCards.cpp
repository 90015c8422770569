// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: 2026 The Paukfix developers
#include "DamagedCards.h"

#include "CardFile.h"
#include "EngineLocks.h"

#include <QFile>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

FileHandle OpenLocked(const QString &path)
{
    CheckAccess(path, CardFile::Access::ReadOnly);
    FileHandle file(open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    LockCardFile(file.Get(), F_RDLCK, path);
    return file;
}

std::int64_t SizeOf(const FileHandle &file)
{
    struct stat info = {};
    return fstat(file.Get(), &info) == 0 ? info.st_size : 0;
}

} // namespace

DamagedState::DamagedState(int file, std::int64_t size, EngineReader &engine, const Fortschritt &fortschritt)
    : reader(file, size, FindGeometry(file, size, fortschritt)),
      survey(reader, fortschritt),
      salvage(survey, engine)
{
}

DamagedCards::DamagedCards(const QString &path, const Fortschritt &fortschritt)
    : path_(path),
      file_(OpenLocked(path)),
      engine_(path, EngineReader::Access::ReadOnly),
      state_(file_.Get(), SizeOf(file_), engine_, fortschritt)
{
}
