#pragma once
// Shared between a job's action, the status bar and the activity manager: percentage,
// message, final state, the job's text log and its profiling events.
#include <QDateTime>
#include <QString>
#include <QStringList>
#include <functional>
#include <mutex>
#include <vector>

#include "Jobs/Cancelable.h"

enum class JobProgressState { inProgress, succeeded, failed, canceled };

class JobProgress final : public Cancelable {
 public:
  enum class ProfileEventType { startGroup, endGroup, start, end, instant };
  struct ProfileEvent {
    ProfileEventType type = ProfileEventType::instant;
    QDateTime timestamp;
    QString name;
  };

  // Sets `canceled` once and runs the cancelation action with the lock held.
  void cancel();
  void update(double percent, const QString& message, JobProgressState state);
  void setCancelationAction(std::function<void()> action) override;
  void setProgressAction(std::function<void()> action);
  void appendOutput(const QString& text);
  void logGitCommand(const QStringList& arguments);
  // Reads the last "<label>: NN%" of a chunk of git's stderr into the progress.
  bool parseGitProgress(const QString& chunk);
  // Sets the state alone, leaving percent and message; never replaces `canceled`.
  void setState(JobProgressState state);

  void startGroup(const QString& name) { addEvent(ProfileEventType::startGroup, name); }
  void endGroup(const QString& name) { addEvent(ProfileEventType::endGroup, name); }
  void start(const QString& name) { addEvent(ProfileEventType::start, name); }
  void end(const QString& name) { addEvent(ProfileEventType::end, name); }

  double progress() const;
  QString message() const;
  JobProgressState state() const;
  QString output() const;
  std::vector<ProfileEvent> profileEvents() const;

  bool isCanceled() const override { return state() == JobProgressState::canceled; }
  bool interruptsOnlyWhenRunning() const override { return true; }

  // "$ git <args>" as a user would have typed it, without the options added for ourselves.
  static QString commandLineForLog(const QStringList& arguments);

 private:
  void addEvent(ProfileEventType type, const QString& name);

  mutable std::mutex updateLock_;
  mutable std::mutex profileLock_;
  double progressValue_ = 0;
  QString messageValue_;
  JobProgressState stateValue_ = JobProgressState::inProgress;
  QString outputValue_;
  std::function<void()> cancelationActionValue_;
  std::function<void()> progressActionValue_;
  std::vector<ProfileEvent> profileEvents_;
};
