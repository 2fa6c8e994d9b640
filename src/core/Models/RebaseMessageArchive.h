#pragma once
// The messages an interactive rebase applies while it runs, by commit id, kept in a
// small JSON file beside the todo list so that a rebase continued later (after a
// conflict or an edit stop) still finds them.
#include <QHash>
#include <QString>

#include "Git/ResultError.h"

namespace RebaseMessageArchive {

inline QString fileName() { return QStringLiteral("jelv-message-archive"); }

GitVoidResult write(const QString& directory, const QHash<QString, QString>& messages);
// Empty when the file is missing or unreadable.
QHash<QString, QString> read(const QString& directory);

// The message for `sha` (full or abbreviated, as git writes it).
std::optional<QString> find(const QHash<QString, QString>& messages, const QString& sha);

}  // namespace RebaseMessageArchive
