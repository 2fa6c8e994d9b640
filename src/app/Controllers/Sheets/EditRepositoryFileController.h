#pragma once
// A small editor for the repository's own text files (".gitignore", ".gitattributes"):
// the file's text, saved whole on submit. Ctrl+Return saves; Return stays in the text.
#include "Controllers/Sheets/GitOperationSheetController.h"

class QPlainTextEdit;

class EditRepositoryFileController : public GitOperationSheetController {
  Q_OBJECT
 public:
  // `path` is absolute; a file that doesn't exist yet starts empty and is created.
  explicit EditRepositoryFileController(QString path, QWidget* parent = nullptr);

  QPlainTextEdit* editor() const { return editor_; }
  void submit() override;
  // The ignore rules decide which files are listed as changed.
  Subdomain changedSubdomains() const override { return Subdomain::repositoryStatus(); }

 private:
  QString path_;
  QPlainTextEdit* editor_;
};
