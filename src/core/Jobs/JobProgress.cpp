#include "Jobs/JobProgress.h"

#include <QRegularExpression>

void JobProgress::cancel() {
  std::lock_guard lock(updateLock_);
  if (stateValue_ == JobProgressState::canceled) return;
  stateValue_ = JobProgressState::canceled;
  if (cancelationActionValue_) cancelationActionValue_();
}

void JobProgress::update(double percent, const QString& message, JobProgressState state) {
  std::lock_guard lock(updateLock_);
  progressValue_ = percent;
  messageValue_ = message;
  stateValue_ = state;
  if (progressActionValue_) progressActionValue_();
}

void JobProgress::setState(JobProgressState state) {
  std::lock_guard lock(updateLock_);
  // Tested and stored under one hold: a cancel arriving between a caller's own test and
  // this store must not be overwritten by the run's outcome.
  if (stateValue_ == JobProgressState::canceled) return;
  stateValue_ = state;
}

void JobProgress::setCancelationAction(std::function<void()> action) {
  std::lock_guard lock(updateLock_);
  cancelationActionValue_ = std::move(action);
}

void JobProgress::setProgressAction(std::function<void()> action) {
  std::lock_guard lock(updateLock_);
  progressActionValue_ = std::move(action);
}

void JobProgress::appendOutput(const QString& text) {
  std::lock_guard lock(updateLock_);
  outputValue_ += text;
  outputValue_ += QLatin1Char('\n');
}

QString JobProgress::commandLineForLog(const QStringList& arguments) {
  QString line = arguments.join(QLatin1Char(' '));
  line.remove(QStringLiteral("-c push.default=upstream "));
  line.remove(QStringLiteral(" --progress"));
  return QStringLiteral("$ git ") + line;
}

void JobProgress::logGitCommand(const QStringList& arguments) {
  appendOutput(commandLineForLog(arguments) + QLatin1Char('\n'));
}

bool JobProgress::parseGitProgress(const QString& chunk) {
  // 'A-z' on purpose: it also admits the punctuation between the two alphabets.
  static const QRegularExpression pattern = [] {
    // Unicode classes for \s and \d, as the platform matcher has them by default.
    QRegularExpression compiled(QStringLiteral("([A-z ]+):\\s+(\\d+)%.*?(\\r)?"),
                                QRegularExpression::UseUnicodePropertiesOption);
    compiled.optimize();  // compiled here once, so the workers only read it
    return compiled;
  }();
  QRegularExpressionMatch last;
  auto it = pattern.globalMatch(chunk);
  bool any = false;
  while (it.hasNext()) {
    last = it.next();
    any = true;
  }
  if (!any || last.lastCapturedIndex() < 2 || last.capturedStart(1) < 0) return false;
  const QString label = last.captured(1).trimmed();
  bool ok = false;
  const int percent = last.captured(2).toInt(&ok, 10);
  if (!ok) return false;
  update(percent, QStringLiteral("%1: %2%").arg(label).arg(percent), JobProgressState::inProgress);
  return true;
}

double JobProgress::progress() const {
  std::lock_guard lock(updateLock_);
  return progressValue_;
}

QString JobProgress::message() const {
  std::lock_guard lock(updateLock_);
  return messageValue_;
}

JobProgressState JobProgress::state() const {
  std::lock_guard lock(updateLock_);
  return stateValue_;
}

QString JobProgress::output() const {
  std::lock_guard lock(updateLock_);
  return outputValue_;
}

std::vector<JobProgress::ProfileEvent> JobProgress::profileEvents() const {
  std::lock_guard lock(profileLock_);
  return profileEvents_;
}

void JobProgress::addEvent(ProfileEventType type, const QString& name) {
  std::lock_guard lock(profileLock_);
  profileEvents_.push_back({type, QDateTime::currentDateTimeUtc(), name});
}
