#pragma once
// A sheet for one operation with a few options: a header that names what happens, check
// boxes (remembered in the preferences when they have a key), choices and text fields.
// The command that opens it says what runs on submit; the flow is the base's.
#include <QString>
#include <functional>
#include <optional>
#include <vector>

#include "Controllers/Sheets/JelvSheetController.h"

class QCheckBox;
class QComboBox;
class QLineEdit;

class OperationSheetController : public JelvSheetController {
  Q_OBJECT
 public:
  using Work = std::function<GitVoidResult(JobProgress&)>;
  // Reads the controls on submit (main thread) and returns what the job runs.
  using Operation = std::function<Work(const OperationSheetController&)>;
  // The reason the input is not acceptable yet, or nothing.
  using Validator = std::function<std::optional<QString>(const OperationSheetController&)>;

  OperationSheetController(const QString& objectName, const QString& title, const QString& message, const QString& submitTitle,
                           QWidget* parent = nullptr);

  void setInformativeText(const QString& text);
  // A box; with a preference key its state comes from there and is saved on submit.
  QCheckBox* addOption(const QString& label, bool checked, const QString& preferenceKey = {});
  QComboBox* addChoice(const QString& label, const QStringList& items, int current = 0);
  QLineEdit* addField(const QString& label, const QString& text, const QString& placeholder = {});
  // A lasting warning under the controls, such as what a hard reset discards.
  void setPermanentWarning(const QString& warning);

  void setOperation(const QString& jobName, const QString& verb, Operation operation);
  void setValidator(Validator validator);

  QCheckBox* option(int index) const { return options_.at(size_t(index)).box; }
  QComboBox* choice(int index) const { return choices_.at(size_t(index)); }
  QLineEdit* field(int index) const { return fields_.at(size_t(index)); }

  void validate(bool force = false) override;
  void submit() override;

 private:
  struct OptionBox {
    QCheckBox* box;
    QString preferenceKey;
  };
  std::vector<OptionBox> options_;
  std::vector<QComboBox*> choices_;
  std::vector<QLineEdit*> fields_;
  QString permanentWarning_;
  QString jobName_;
  QString verb_;
  Operation operation_;
  Validator validator_;
};
