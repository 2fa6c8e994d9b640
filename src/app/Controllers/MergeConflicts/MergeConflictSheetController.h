#pragma once
// The three-pane merge editor of one conflicted file: local and remote on the sides,
// the result in the middle. Lines are taken by clicks on the sides or typed into the
// result; "Save" writes the result and stages the file. Saving waits until every
// conflict has a result, so that no side is dropped unnoticed.
#include <memory>

#include "Controllers/Sheets/JelvSheetController.h"
#include "Git/Merge/SideBySideMergeController.h"
#include "Models/GitModule.h"

class MergeTextView;
class MergeSourceTextView;
class QLabel;

class MergeConflictSheetController : public JelvSheetController {
  Q_OBJECT
 public:
  MergeConflictSheetController(GitModule module, QString path, QWidget* parent = nullptr);

  // Fetches the diff in the background and builds the panes; a failure ends the sheet.
  void refresh();
  // For tests and the benchmark: the panes from a model at hand.
  void load(std::shared_ptr<MergeConflict> conflict);

  SideBySideMergeController* controller() const { return controller_.get(); }
  MergeTextView* resultTextView() const { return result_; }
  MergeSourceTextView* localTextView() const { return local_; }
  MergeSourceTextView* remoteTextView() const { return remote_; }

  void validate(bool force = false) override;
  void submit() override;
  Subdomain changedSubdomains() const override;

 Q_SIGNALS:
  void loaded();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void regenerated();

  GitModule module_;
  QString path_;
  std::unique_ptr<SideBySideMergeController> controller_;
  MergeSourceTextView* local_;
  MergeTextView* result_;
  MergeSourceTextView* remote_;
  QLabel* localTitle_;
  QLabel* remoteTitle_;
  bool refreshed_ = false;
};
