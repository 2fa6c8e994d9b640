// jelv_ri FILE: the sequence editor and commit-message editor of an interactive rebase.
// The application edits FILE in its own sheet; this program only waits for its word and
// reports it to git through the exit status.
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <cstdio>

#include "RebaseEditorRequest.h"

namespace {

int timeoutSeconds(bool todoList) {
  bool ok = false;
  const int fromEnvironment = qEnvironmentVariableIntValue("JELV_RI_TIMEOUT", &ok);
  if (ok && fromEnvironment > 0) return fromEnvironment;
  // The todo list waits for the user; a message is answered without anyone's help.
  return todoList ? 4 * 60 * 60 : 120;
}

const char* describe(RebaseEditorRequest::Outcome outcome) {
  switch (outcome) {
    case RebaseEditorRequest::Outcome::canceled: return "canceled in Jelv";
    case RebaseEditorRequest::Outcome::noBus: return "no session bus to reach Jelv";
    case RebaseEditorRequest::Outcome::timedOut: return "Jelv did not answer in time";
    case RebaseEditorRequest::Outcome::abandoned: return "Jelv or git has ended";
    default: return "";
  }
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  if (argc < 2) {
    std::fprintf(stderr, "usage: jelv_ri FILE\n");
    return 2;
  }
  const QString path = QDir::cleanPath(QFileInfo(QString::fromLocal8Bit(argv[1])).absoluteFilePath());
  const bool todoList = QFileInfo(path).fileName() == QStringLiteral("git-rebase-todo");
  RebaseEditorRequest request(path, timeoutSeconds(todoList));
  QObject::connect(&request, &RebaseEditorRequest::ended, &app, &QCoreApplication::quit, Qt::QueuedConnection);
  request.start();
  if (request.outcome() == RebaseEditorRequest::Outcome::pending) app.exec();
  if (request.outcome() == RebaseEditorRequest::Outcome::finished) return 0;
  std::fprintf(stderr, "jelv_ri: %s\n", describe(request.outcome()));
  return 1;
}
