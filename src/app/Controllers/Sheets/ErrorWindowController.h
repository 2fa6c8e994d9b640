#pragma once
// The error sheet: git's text, styled, and when the failure can be repaired, one button
// that does it (remove a stale index.lock, commit again without hooks, set up an
// identity).
#include <optional>

#include "Controllers/Sheets/JelvSheetController.h"
#include "Models/ErrorSheetContent.h"
#include "Models/GitModule.h"

class GitOutputView;

class ErrorWindowController : public JelvSheetController {
  Q_OBJECT
 public:
  ErrorWindowController(GitModule module, std::optional<ResultError> errorResult, QWidget* parent = nullptr);

  const std::optional<ResultError>& errorResult() const { return errorResult_; }
  const ErrorSheetContent& content() const { return content_; }
  QPushButton* firstButton() const { return firstButton_; }
  GitOutputView* errorTextView() const { return errorTextView_; }

  // Opens the sheet for `error` on `parent`'s window with the window's queue. `wire` connects
  // the caller to this sheet and to each sheet a failed repair opens after it.
  static ErrorWindowController* present(QWidget* parent, const GitModule& module, const ResultError& error,
                                        std::shared_ptr<JobQueue> queue,
                                        std::function<void(ErrorWindowController*)> wire = {});

 Q_SIGNALS:
  // The repository's state changed behind the view (a lock removed, a commit made).
  void repositoryChanged();
  // A commit made by the retry: the commit box empties its fields.
  void committed();
  void identitySetupRequested();

 private:
  void runRepair();
  void removeIndexLock();
  void commitWithoutHooks();
  void forceFetch();

  GitModule module_;
  std::optional<ResultError> errorResult_;
  ErrorSheetContent content_;
  QPushButton* firstButton_;
  GitOutputView* errorTextView_;
};
