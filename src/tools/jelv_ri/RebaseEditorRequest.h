#pragma once
// One request of the rebase editor: posts the file that git handed over and waits for
// the application's answer about that same file. It gives up when the application or
// git has gone away, or after a time limit, so that git is never left hanging.
#include <QObject>
#include <QString>
#include <QTimer>
#include <sys/types.h>
#include <vector>

class RebaseEditorRequest : public QObject {
  Q_OBJECT
 public:
  enum class Outcome { pending, finished, canceled, noBus, timedOut, abandoned };

  RebaseEditorRequest(QString filePath, int timeoutSeconds, QObject* parent = nullptr);

  // Subscribes before posting, so that a quick answer is not missed.
  void start();
  Outcome outcome() const { return outcome_; }

 Q_SIGNALS:
  void ended();

 private Q_SLOTS:
  void notification(const QString& name, const QString& object);

 private:
  void end(Outcome outcome);
  void checkProcesses();

  QString filePath_;
  QString requestName_;
  int timeoutSeconds_;
  Outcome outcome_ = Outcome::pending;
  QTimer deadline_;
  QTimer watch_;
  std::vector<pid_t> watched_;  // the application and git above us
};
