#include "UI/CustomCommands/CustomCommandResultController.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QHBoxLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStyle>
#include <QVBoxLayout>

CustomCommandResultController::CustomCommandResultController(const QString& customCommandName, const QString& actionPath,
                                                             const ShellStringResponse& response, QWidget* parent)
    : QDialog(parent) {
  setObjectName(QStringLiteral("customCommandResult"));
  setWindowTitle(customCommandName);
  const bool ok = response.isSuccess();
  auto* icon = new QLabel(this);
  const QIcon image = ok ? QApplication::windowIcon() : style()->standardIcon(QStyle::SP_MessageBoxWarning);
  icon->setPixmap((image.isNull() ? style()->standardIcon(QStyle::SP_MessageBoxInformation) : image).pixmap(32, 32));
  auto* heading = new QLabel(customCommandName + (ok ? QStringLiteral(" completed") : QStringLiteral(" failed")), this);
  heading->setObjectName(QStringLiteral("heading"));
  QFont bold = heading->font();
  bold.setBold(true);
  heading->setFont(bold);
  auto* path = new QLabel(actionPath, this);
  path->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* titles = new QVBoxLayout;
  titles->addWidget(heading);
  titles->addWidget(path);
  auto* top = new QHBoxLayout;
  top->addWidget(icon);
  top->addLayout(titles, 1);

  output_ = new QPlainTextEdit(this);
  output_->setObjectName(QStringLiteral("output"));
  output_->setReadOnly(true);
  output_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  QString text;
  if (ok) {
    text = response.output;
    if (!response.errorOutput.isEmpty()) text += (text.isEmpty() || text.endsWith(QLatin1Char('\n')) ? QString() : QStringLiteral("\n")) + response.errorOutput;
  } else if (response.failure) {
    text = response.failure->error.isEmpty() ? response.failure->output : response.failure->error;
  }
  output_->setPlainText(text);

  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addLayout(top);
  layout->addWidget(output_, 1);
  layout->addWidget(buttons);
  resize(640, 420);
}

CustomCommandResultController* CustomCommandResultController::present(QWidget* parent, const QString& customCommandName,
                                                                      const QString& actionPath, const ShellStringResponse& response) {
  auto* window = new CustomCommandResultController(customCommandName, actionPath, response, parent);
  window->setAttribute(Qt::WA_DeleteOnClose);
  window->show();
  return window;
}
