#pragma once
// The repository settings sheet: the identity commits are made with (user.name and
// user.email of the repository's own configuration), the signing key, sign-off and the
// commit template. Values are read and written by jobs; the sheet only gathers them.
#include <optional>

#include "Controllers/Sheets/JelvSheetController.h"
#include "Models/GitModule.h"
#include "Models/RepositoryCommitSettings.h"

class QCheckBox;
class QLineEdit;
class QPlainTextEdit;

class RepositorySettingsController : public JelvSheetController {
  Q_OBJECT
 public:
  explicit RepositorySettingsController(GitModule module, QWidget* parent = nullptr);

  // Reads the current values on the sheet's queue; the fields stay disabled until then.
  void load();
  // Puts the cursor in the name field once the values are there (the identity repair).
  void setFocusOnIdentity(bool focus) { focusIdentity_ = focus; }

  QLineEdit* nameField() const { return name_; }
  QLineEdit* emailField() const { return email_; }
  QLineEdit* signingKeyField() const { return signingKey_; }
  QCheckBox* signOffBox() const { return signOff_; }
  QPlainTextEdit* templateField() const { return template_; }
  bool isLoaded() const { return loaded_.has_value(); }

  void validate(bool force = false) override;
  void submit() override;

 Q_SIGNALS:
  void loaded();

 private:
  void fill(const RepositoryCommitSettings& settings);
  RepositoryCommitSettings gathered() const;

  GitModule module_;
  std::optional<RepositoryCommitSettings> loaded_;
  std::optional<RepositoryCommitSettings> submitted_;  // what the running save writes
  bool focusIdentity_ = false;
  QLineEdit* name_;
  QLineEdit* email_;
  QLineEdit* signingKey_;
  QCheckBox* signOff_;
  QPlainTextEdit* template_;
};

// Opens the sheet on `parent`'s window; with `focusIdentity` the name field has the focus.
// `completion` runs after the sheet has ended (an error has then been shown already).
struct ShowRepositorySettingsSheetCommand {
  static RepositorySettingsController* execute(QWidget* parent, const GitModule& module, std::shared_ptr<JobQueue> queue,
                                               bool focusIdentity = false,
                                               std::function<void(const JelvSheetResult&)> completion = nullptr);
};
