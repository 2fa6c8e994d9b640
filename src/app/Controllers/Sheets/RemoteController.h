#pragma once
// "Add Remote" and "Edit Remote": name, URL, and whether the automatic fetch skips it.
#include <QStringList>
#include <optional>

#include "Controllers/Sheets/JelvSheetController.h"
#include "Git/Commands/Remotes/RemoteGitCommand.h"
#include "Models/GitModule.h"

class QCheckBox;
class QLineEdit;

class RemoteController : public JelvSheetController {
  Q_OBJECT
 public:
  // Without `editing` the sheet adds a remote. `otherRemotes` are the names in use.
  RemoteController(GitModule module, std::optional<RemoteGitCommand::Edit> editing, QStringList otherRemotes, QWidget* parent = nullptr);

  QLineEdit* nameField() const { return name_; }
  QLineEdit* urlField() const { return url_; }
  QCheckBox* noImplicitFetchBox() const { return noImplicitFetch_; }

  void validate(bool force = false) override;
  void submit() override;

 private:
  RemoteGitCommand::Edit values() const;

  GitModule module_;
  std::optional<RemoteGitCommand::Edit> editing_;
  QStringList otherRemotes_;
  QLineEdit* name_;
  QLineEdit* url_;
  QCheckBox* noImplicitFetch_;
};
