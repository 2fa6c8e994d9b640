#pragma once
// Push a tag to a chosen remote, delete a tag here and, when asked, on a remote too, or
// delete it on a remote only.
#include <QStringList>

#include "Controllers/Sheets/JelvSheetController.h"
#include "Models/GitModule.h"

class QCheckBox;
class QComboBox;

class TagRemoteController : public JelvSheetController {
  Q_OBJECT
 public:
  enum class Mode { push, remove, removeOnRemote };

  // `remotes` in configuration order; the first is preselected.
  TagRemoteController(GitModule module, Mode mode, QString tagName, QString fullReference, QStringList remotes,
                      QWidget* parent = nullptr);

  QComboBox* remoteBox() const { return remote_; }
  // Delete mode only: whether the remote's tag goes too.
  QCheckBox* onRemoteBox() const { return onRemote_; }

  void validate(bool force = false) override;
  void submit() override;

 private:
  GitModule module_;
  Mode mode_;
  QString tagName_;
  QString fullReference_;
  QComboBox* remote_;
  QCheckBox* onRemote_ = nullptr;
};
