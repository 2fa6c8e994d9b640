#pragma once
// The base of every modal sheet: a header, an explanatory text, the sheet's own
// controls, and a status line with the Cancel and Submit buttons. A sheet validates its
// input on each change, shows progress while its job runs, and ends with one of three
// results; it never shows an error itself (its opener does).
#include <QDialog>
#include <QPointer>
#include <functional>
#include <memory>

#include "Controllers/Sheets/JelvSheetResult.h"
#include "Models/Subdomain.h"
#include "Repository/RefreshProtocol.h"

class Job;
class JobProgress;
class JobQueue;
class QLabel;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

class JelvSheetController : public QDialog {
  Q_OBJECT
 public:
  enum class Status { none = 0, busy = 1, success = 2, warning = 3, error = 4 };
  static constexpr int cancelCode = -100;
  static constexpr int successCode = 100;
  static constexpr int errorCode = -201;

  explicit JelvSheetController(QWidget* parent = nullptr);

  const JelvSheetResult& result() const { return result_; }
  bool isOperationInProgress() const { return isOperationInProgress_; }
  Status status() const { return status_; }

  QLabel* messageLabel() const { return messageLabel_; }
  QLabel* informativeLabel() const { return informativeLabel_; }
  QLabel* statusLabel() const { return statusLabel_; }
  QPushButton* submitButton() const { return submitButton_; }
  QPushButton* cancelButton() const { return cancelButton_; }
  // Where subclasses put their controls, between the texts and the status line.
  QVBoxLayout* contentLayout() const { return contentLayout_; }

  // Enables the submit button when the input is acceptable; the one place that may
  // write a warning to the status line. Called on load and on every control change.
  virtual void validate(bool force = false);
  void setStatus(Status status, const QString& message = {});

  void endWithCancel();
  void endWithSuccess();
  void endWithError(const ResultError& error);

  // The repository the sheet works on, if any: a sheet that ends with success asks it
  // to read again what the sheet changed.
  void setRepository(RefreshProtocol* repository, QObject* lifetime);
  virtual Subdomain changedSubdomains() const { return Subdomain::none(); }

  // The queue of the repository window the sheet belongs to; none elsewhere.
  void setJobQueue(std::shared_ptr<JobQueue> queue) { jobQueue_ = std::move(queue); }
  std::shared_ptr<JobQueue> jobQueue() const;

  // Opens `sheet` window-modal on `parent`'s window; `completion` runs when it has ended,
  // after which the sheet deletes itself. Nothing opens without a window.
  static void showSheet(QWidget* parent, JelvSheetController* sheet, std::function<void(const JelvSheetResult&)> completion);

  // Applies `apply` to every input control of the sheet's content, nested ones included.
  void forEachControl(const std::function<void(QWidget*)>& apply) const;
  void setControlsEnabled(bool enabled);

  // Runs the sheet's operation as a job named `jobName`: the controls go off and the
  // status line shows `verb` while it runs; the job's report ends the sheet (success,
  // error, or cancel when the user canceled it). Without a queue nothing runs.
  void runSheetJob(const QString& jobName, const QString& verb, std::function<GitVoidResult(JobProgress&)> work);
  // The job that runs the sheet's operation, while it runs.
  std::shared_ptr<Job> runningJob() const { return runningJob_.lock(); }

 public Q_SLOTS:
  virtual void submit();
  virtual void cancel();

 protected:
  void reject() override { cancel(); }

 private:
  void end(JelvSheetResult result, int code);
  void closeEvent(QCloseEvent* event) override;

  JelvSheetResult result_;
  bool isOperationInProgress_ = false;
  Status status_ = Status::none;
  std::shared_ptr<JobQueue> jobQueue_;
  std::weak_ptr<Job> runningJob_;
  bool cancelRequested_ = false;
  RefreshProtocol* repository_ = nullptr;
  QPointer<QObject> repositoryLifetime_;  // the repository is only asked while this lives
  QLabel* messageLabel_;
  QLabel* informativeLabel_;
  QVBoxLayout* contentLayout_;
  QProgressBar* progressIndicator_;
  QLabel* statusImageView_;
  QLabel* statusLabel_;
  QPushButton* cancelButton_;
  QPushButton* submitButton_;
};
