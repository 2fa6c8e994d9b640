#pragma once
// The remotes of the configuration: add, remove, rename, change the URL, and keep one
// out of the automatic fetch.
#include <QStringList>

#include "Git/ResultError.h"
#include "Models/GitModule.h"

class JobProgress;

struct RemoteGitCommand {
  static QStringList addArguments(const QString& name, const QString& url);
  static QStringList removeArguments(const QString& name);
  static QStringList renameArguments(const QString& oldName, const QString& newName);
  static QStringList setUrlArguments(const QString& name, const QString& url);
  static QStringList implicitFetchArguments(const QString& name, bool disabled);

  static GitVoidResult add(const GitModule& module, const QString& name, const QString& url, JobProgress* progress = nullptr);
  static GitVoidResult remove(const GitModule& module, const QString& name, JobProgress* progress = nullptr);
  static GitVoidResult rename(const GitModule& module, const QString& oldName, const QString& newName, JobProgress* progress = nullptr);
  static GitVoidResult setUrl(const GitModule& module, const QString& name, const QString& url, JobProgress* progress = nullptr);
  static GitVoidResult setImplicitFetchDisabled(const GitModule& module, const QString& name, bool disabled,
                                                JobProgress* progress = nullptr);

  struct Edit {
    QString name;
    QString url;
    bool disableImplicitFetch = false;
  };
  // Applies what differs between `before` and `after`: the URL first, then the flag, then
  // the name, so that a failed rename leaves the other changes made under the old name.
  static GitVoidResult edit(const GitModule& module, const Edit& before, const Edit& after, JobProgress* progress = nullptr);
};
