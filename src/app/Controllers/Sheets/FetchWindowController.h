#pragma once
// "Fetch": one remote or all, with prune and tags as last time.
#include <vector>

#include "Controllers/Sheets/JelvSheetController.h"
#include "Models/Remote.h"

class QCheckBox;
class QComboBox;

class FetchWindowController : public JelvSheetController {
  Q_OBJECT
 public:
  FetchWindowController(std::vector<Remote> remotes, QString remote, QWidget* parent = nullptr);

  struct Values {
    QString remote;  // empty with all remotes
    bool allRemotes = false;
    bool prune = false;
    bool tags = false;
  };
  Values values() const;

  QComboBox* remoteList() const { return remoteList_; }
  QCheckBox* allRemotesBox() const { return allRemotes_; }
  QCheckBox* pruneBox() const { return prune_; }
  QCheckBox* tagsBox() const { return tags_; }

  void validate(bool force = false) override;
  void submit() override;

 private:
  std::vector<Remote> remotes_;
  QComboBox* remoteList_;
  QCheckBox* allRemotes_;
  QCheckBox* prune_;
  QCheckBox* tags_;
};
