#include "Controllers/Sheets/EditRepositoryFileController.h"

#include <QFile>
#include <QFileInfo>
#include <QFontDatabase>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSaveFile>
#include <QVBoxLayout>

#include "Git/Process/TextEncoding.h"
#include "Logging/AdvancedLogger.h"

EditRepositoryFileController::EditRepositoryFileController(QString path, QWidget* parent)
    : GitOperationSheetController(parent), path_(std::move(path)) {
  const QString name = QFileInfo(path_).fileName();
  setWindowTitle(QStringLiteral("Edit %1").arg(name));
  messageLabel()->setText(QStringLiteral("Edit %1").arg(name));
  editor_ = new QPlainTextEdit(this);
  editor_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  editor_->setLineWrapMode(QPlainTextEdit::NoWrap);
  editor_->setMinimumSize(520, 300);
  QFile file(path_);
  if (file.open(QIODevice::ReadOnly)) editor_->setPlainText(decodeString(file.readAll()).value_or(QString()));
  contentLayout()->addWidget(editor_, 1);
  submitButton()->setText(QStringLiteral("Save"));
}

void EditRepositoryFileController::submit() {
  QString text = editor_->toPlainText();
  if (!text.isEmpty() && !text.endsWith(QLatin1Char('\n'))) text += QLatin1Char('\n');
  QSaveFile file(path_);
  if (!file.open(QIODevice::WriteOnly) || file.write(text.toUtf8()) < 0 || !file.commit()) {
    const QString message = QStringLiteral("Cannot write '%1': %2").arg(path_, file.errorString());
    LOG_ERROR(message);
    endWithError(Error::Generic{message});
    return;
  }
  endWithSuccess();
}
