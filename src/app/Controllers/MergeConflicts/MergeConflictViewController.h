#pragma once
// "Select version to resolve with": one conflicted file, what each side did to it, and
// the ways out: take a side whole (deleting the file when that side deleted it), merge
// in Jelv's editor, or merge in the outside tool chosen in the preferences.
#include <functional>
#include <optional>

#include "Controllers/Sheets/JelvSheetController.h"
#include "Models/GitModule.h"
#include "Models/UnmergedFile.h"

class QLabel;
class QPushButton;

class MergeConflictViewController : public JelvSheetController {
  Q_OBJECT
 public:
  MergeConflictViewController(GitModule module, QString path, QWidget* parent = nullptr);

  // What "Merge in Jelv" does once this sheet has ended; the command sets it.
  std::function<void()> openEditor;

  void refresh();
  // Runs the outside tool on the file; the sheet ends when the tool has ended.
  void merge();
  void choose(UnmergedFileVersionType version);

  QPushButton* localButton() const { return localButton_; }
  QPushButton* remoteButton() const { return remoteButton_; }
  QPushButton* editorButton() const { return editorButton_; }
  QPushButton* toolButton() const { return toolButton_; }
  const std::optional<UnmergedFile>& file() const { return file_; }

  void validate(bool force = false) override;
  Subdomain changedSubdomains() const override;

 Q_SIGNALS:
  void loaded();

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void showFile(const UnmergedFile& file);

  GitModule module_;
  QString path_;
  std::optional<UnmergedFile> file_;
  QLabel* localLabel_;
  QLabel* remoteLabel_;
  QPushButton* localButton_;
  QPushButton* remoteButton_;
  QPushButton* editorButton_;
  QPushButton* toolButton_;
  bool refreshed_ = false;
};
