#include "Controllers/Sheets/JelvSheetController.h"

#include <algorithm>

#include <QAbstractButton>
#include <QComboBox>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLayout>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStyle>
#include <QTextEdit>
#include <QVBoxLayout>

#include <QCoreApplication>

#include "Jobs/QueuedCall.h"
#include "Jobs/Job.h"
#include "Jobs/JobQueue.h"
#include "Logging/AdvancedLogger.h"

#include <QCloseEvent>

namespace {

// A window keeps the size it was shown with: a warning, a longer button title or an option
// shown later would be cut off. Every change of the content's size posts a layout request
// to the sheet; the sheet then grows until all of its content fits (it never shrinks).
class GrowToFit : public QObject {
 public:
  using QObject::QObject;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::LayoutRequest) fit(static_cast<QWidget*>(watched));
    return false;
  }

 private:
  static void fit(QWidget* sheet) {
    QLayout* layout = sheet->layout();
    if (!layout || !sheet->isVisible()) return;
    layout->activate();
    const QSize hint = layout->totalSizeHint();
    const int width = std::max(sheet->width(), hint.width());
    const int height = std::max(sheet->height(), layout->hasHeightForWidth() ? layout->totalHeightForWidth(width) : hint.height());
    if (width != sheet->width() || height != sheet->height()) sheet->resize(width, height);
  }
};

}  // namespace

JelvSheetController::JelvSheetController(QWidget* parent) : QDialog(parent) {
  setWindowModality(Qt::WindowModal);
  auto* layout = new QVBoxLayout(this);
  messageLabel_ = new QLabel(this);
  QFont bold = messageLabel_->font();
  bold.setBold(true);
  messageLabel_->setFont(bold);
  messageLabel_->setWordWrap(true);
  informativeLabel_ = new QLabel(this);
  informativeLabel_->setWordWrap(true);
  informativeLabel_->hide();
  layout->addWidget(messageLabel_);
  layout->addWidget(informativeLabel_);
  contentLayout_ = new QVBoxLayout;
  layout->addLayout(contentLayout_, 1);

  auto* statusLine = new QHBoxLayout;
  progressIndicator_ = new QProgressBar(this);
  progressIndicator_->setRange(0, 0);  // spinning: no known end
  progressIndicator_->setMaximumWidth(60);
  progressIndicator_->hide();
  statusImageView_ = new QLabel(this);
  statusImageView_->hide();
  statusLabel_ = new QLabel(this);
  statusLabel_->setWordWrap(true);  // a long warning takes lines, not the buttons' room
  statusLabel_->setMinimumWidth(220);
  statusLabel_->hide();
  cancelButton_ = new QPushButton(QStringLiteral("Cancel"), this);
  submitButton_ = new QPushButton(QStringLiteral("Submit"), this);
  submitButton_->setDefault(true);  // Return submits
  statusLine->addWidget(progressIndicator_);
  statusLine->addWidget(statusImageView_);
  statusLine->addWidget(statusLabel_, 1);
  // Keeps the buttons at their natural width on the right while the status line is empty;
  // a message takes all the room there is (the label's stretch wins over this one's).
  statusLine->addStretch();
  statusLine->addWidget(cancelButton_);
  statusLine->addWidget(submitButton_);
  layout->addLayout(statusLine);

  connect(cancelButton_, &QPushButton::clicked, this, &JelvSheetController::cancel);
  connect(submitButton_, &QPushButton::clicked, this, &JelvSheetController::submit);
  installEventFilter(new GrowToFit(this));
}

void JelvSheetController::validate(bool) { submitButton_->setEnabled(true); }

void JelvSheetController::setStatus(Status status, const QString& message) {
  status_ = status;
  isOperationInProgress_ = status == Status::busy;
  if (status == Status::none) {
    progressIndicator_->hide();
    statusImageView_->hide();
    statusLabel_->hide();
    statusLabel_->clear();
    return;
  }
  statusLabel_->setText(message);
  statusLabel_->setVisible(!message.isEmpty());
  progressIndicator_->setVisible(status == Status::busy);
  if (status == Status::busy) {
    statusImageView_->hide();
    return;
  }
  const QStyle::StandardPixmap icon = status == Status::success   ? QStyle::SP_DialogApplyButton
                                      : status == Status::warning ? QStyle::SP_MessageBoxWarning
                                                                  : QStyle::SP_MessageBoxCritical;
  statusImageView_->setPixmap(style()->standardIcon(icon).pixmap(16, 16));
  statusImageView_->show();
}

void JelvSheetController::submit() { endWithSuccess(); }

void JelvSheetController::cancel() {
  // A busy sheet is ended only by its job's report: cancel the job and wait for it.
  if (isOperationInProgress_) {
    if (auto job = runningJob_.lock()) {
      cancelRequested_ = true;
      job->progress().cancel();
      setStatus(Status::busy, QStringLiteral("Canceling…"));
    }
    return;
  }
  endWithCancel();
}

void JelvSheetController::closeEvent(QCloseEvent* event) {
  if (isOperationInProgress_) {
    event->ignore();
    cancel();
    return;
  }
  QDialog::closeEvent(event);
}

void JelvSheetController::runSheetJob(const QString& jobName, const QString& verb, std::function<GitVoidResult(JobProgress&)> work) {
  const std::shared_ptr<JobQueue> queue = jobQueue();
  if (!queue) return;
  setControlsEnabled(false);
  setStatus(Status::busy, verb);
  cancelRequested_ = false;
  QPointer<JelvSheetController> guard(this);
  auto job = Job::make(jobName, Job::Show{3}, Job::ProgressType::infinite, [guard, work = std::move(work)](JobProgress& progress) {
    GitVoidResult result = work(progress);
    const bool canceled = progress.isCanceled();
    postQueuedCall(qApp, [guard, result = std::move(result), canceled] {
      if (!guard) return;
      if (canceled || guard->cancelRequested_ || result.isError<Error::Canceled>()) {
        guard->endWithCancel();
      } else if (result) {
        guard->endWithSuccess();
      } else {
        guard->endWithError(result.error());
      }
    });
  });
  runningJob_ = job;
  queue->schedule(job);
}

void JelvSheetController::endWithCancel() { end({JelvSheetResult::Cancel{}}, cancelCode); }
void JelvSheetController::endWithSuccess() {
  const Subdomain changed = changedSubdomains();
  if (repository_ && repositoryLifetime_ && !changed.isEmpty()) repository_->refreshRepository(changed);
  end({JelvSheetResult::Success{}}, successCode);
}

void JelvSheetController::setRepository(RefreshProtocol* repository, QObject* lifetime) {
  repository_ = repository;
  repositoryLifetime_ = lifetime;
}

void JelvSheetController::endWithError(const ResultError& error) { end({error}, errorCode); }

void JelvSheetController::end(JelvSheetResult result, int code) {
  result_ = std::move(result);
  isOperationInProgress_ = false;
  done(code);
}

std::shared_ptr<JobQueue> JelvSheetController::jobQueue() const {
  if (!jobQueue_) LOG_ERROR(QStringLiteral("jobQueue"));
  return jobQueue_;
}

void JelvSheetController::showSheet(QWidget* parent, JelvSheetController* sheet,
                                    std::function<void(const JelvSheetResult&)> completion) {
  if (!parent || !parent->window()) {
    LOG_ERROR(qobject_cast<JelvSheetController*>(parent)
                  ? QStringLiteral("Cannot open sheet because parent controller doesn't have window")
                  : QStringLiteral("Cannot open sheet because the controller doesn't have window"));
    sheet->deleteLater();
    return;
  }
  if (sheet->parentWidget() != parent->window()) sheet->setParent(parent->window(), sheet->windowFlags() | Qt::Sheet | Qt::Dialog);
  sheet->setWindowModality(Qt::WindowModal);
  QObject::connect(sheet, &QDialog::finished, sheet, [sheet, completion = std::move(completion)](int) {
    if (completion) completion(sheet->result());
    sheet->deleteLater();
  });
  sheet->validate(true);
  sheet->open();
}

void JelvSheetController::forEachControl(const std::function<void(QWidget*)>& apply) const {
  // Walks the content recursively; group boxes are entered, images and plain labels skipped.
  std::function<void(const QObject*)> walk = [&](const QObject* object) {
    for (QObject* child : object->children()) {
      auto* widget = qobject_cast<QWidget*>(child);
      if (!widget) continue;
      if (qobject_cast<QGroupBox*>(widget)) {
        walk(widget);
        continue;
      }
      if (qobject_cast<QLabel*>(widget) || qobject_cast<QProgressBar*>(widget)) continue;
      if (qobject_cast<QAbstractButton*>(widget) || qobject_cast<QLineEdit*>(widget) || qobject_cast<QComboBox*>(widget) ||
          qobject_cast<QPlainTextEdit*>(widget) || qobject_cast<QTextEdit*>(widget)) {
        if (widget != cancelButton_) apply(widget);
        continue;
      }
      walk(widget);
    }
  };
  walk(this);
}

void JelvSheetController::setControlsEnabled(bool enabled) {
  forEachControl([enabled](QWidget* control) { control->setEnabled(enabled); });
}
