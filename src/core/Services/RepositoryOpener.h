#pragma once
// Opening a path as a repository: the path is validated off the main thread; then, on
// the main thread, the document side shows it (an existing tab comes to the front, or a
// new one opens) and the registry adds it or touches its "lastOpened", so that it heads
// the recent list.
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

#include "Models/GitModule.h"
#include "Models/RepositoryValidation.h"

class AppSettings;

class RepositoryOpener : public QObject {
  Q_OBJECT

 public:
  struct Result {
    std::optional<GitModule> gitModule;  // set when the repository was opened
    QString failureText;                 // otherwise what to tell the user
  };
  using DocumentOpener = std::function<void(const GitModule&)>;
  using CompletionHandler = std::function<void(const Result&)>;

  RepositoryOpener(AppSettings& settings, DocumentOpener openDocument, QObject* parent = nullptr);

  // Takes a path or a "file://" URL. The handler runs on this object's thread. With
  // allowSubmodule a submodule opens too; it does not join the registry, whose list holds
  // top-level repositories (the submodule is reached through its super-project).
  void openRepository(const QString& url, CompletionHandler completionHandler = {}, bool allowSubmodule = false);

  // The local path a "file://" URL or a plain path stands for.
  static QString localPath(const QString& url);

 private:
  void finish(const QString& path, const std::variant<GitModule, RepositoryRefusal>& validation,
              const CompletionHandler& completionHandler);

  AppSettings& settings_;
  DocumentOpener openDocument_;
};
