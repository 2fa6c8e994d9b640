#include "UI/WelcomeWindowController.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QThreadPool>
#include <QVBoxLayout>

#include "Logging/AdvancedLogger.h"
#include "Models/AppSettings.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"
#include "Services/RepositoryScan.h"

WelcomeWindowController::WelcomeWindowController(AppSettings& registry, Preferences& preferences, QWidget* parent)
    : QWidget(parent, Qt::Window), registry_(registry), preferences_(preferences) {
  setObjectName(QStringLiteral("welcomeWindow"));
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowTitle(tr("Welcome to Jelv"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(28, 24, 28, 20);
  layout->setSpacing(12);
  auto* heading = new QLabel(tr("Welcome to Jelv"), this);
  QFont font = heading->font();
  font.setPointSizeF(font.pointSizeF() * 1.6);
  font.setBold(true);
  heading->setFont(font);
  layout->addWidget(heading);
  auto* text = new QLabel(tr("Where do you keep your source code? Jelv looks for Git repositories in this folder "
                             "and lists them in the repository manager. You can change it later in the preferences."),
                          this);
  text->setWordWrap(true);
  layout->addWidget(text);

  auto* row = new QHBoxLayout;
  folder_ = new QLineEdit(suggestedFolder(), this);
  folder_->setObjectName(QStringLiteral("sourceFolderField"));
  choose_ = new QPushButton(tr("Choose…"), this);
  row->addWidget(folder_, 1);
  row->addWidget(choose_);
  layout->addLayout(row);
  status_ = new QLabel(this);
  status_->setWordWrap(true);
  layout->addWidget(status_);
  layout->addStretch(1);

  auto* buttons = new QHBoxLayout;
  buttons->addStretch(1);
  continue_ = new QPushButton(tr("Continue"), this);
  continue_->setDefault(true);
  buttons->addWidget(continue_);
  layout->addLayout(buttons);

  connect(choose_, &QPushButton::clicked, this, &WelcomeWindowController::chooseFolder);
  connect(continue_, &QPushButton::clicked, this, &WelcomeWindowController::complete);
  connect(folder_, &QLineEdit::textChanged, this, &WelcomeWindowController::updateButtons);
  connect(folder_, &QLineEdit::returnPressed, this, &WelcomeWindowController::complete);
  updateButtons();
  resize(560, 260);
}

QString WelcomeWindowController::suggestedFolder() {
  const QDir home = QDir::home();
  for (const char* name : {"src", "Projects", "projects", "code", "git", "Developer"}) {
    if (home.exists(QLatin1String(name))) return home.filePath(QLatin1String(name));
  }
  return home.path();
}

QString WelcomeWindowController::statusText() const { return status_->text(); }

void WelcomeWindowController::chooseFolder() {
  const QString folder = QFileDialog::getExistingDirectory(this, tr("Choose the folder of your source code"), folder_->text());
  if (!folder.isEmpty()) folder_->setText(folder);
}

void WelcomeWindowController::updateButtons() {
  const QFileInfo info(folder_->text().trimmed());
  const bool usable = info.isDir();
  continue_->setEnabled(usable && !scanning_);
  choose_->setEnabled(!scanning_);
  folder_->setEnabled(!scanning_);
  if (!scanning_) status_->setText(usable || folder_->text().trimmed().isEmpty() ? QString() : tr("This folder does not exist."));
}

void WelcomeWindowController::complete() {
  const QString folder = QDir::cleanPath(folder_->text().trimmed());
  if (scanning_ || !QFileInfo(folder).isDir()) return;
  scanning_ = true;
  updateButtons();
  status_->setText(tr("Looking for repositories in %1…").arg(folder));
  preferences_.setDefaultSourceFolder(folder);
  QPointer<WelcomeWindowController> self(this);
  AppSettings* registry = &registry_;
  QThreadPool::globalInstance()->start([self, registry, folder] {
    // Added to what the registry already knows (a folder opened earlier stays listed).
    QStringList paths;
    RepositoryScan::findGitRepositories(folder, paths, RepositoryScan::startLevel);
    const int found = int(paths.size() - RepositoryScan::addRepositories(*registry, paths, folder).size());
    LOG_INFO(QStringLiteral("Found %1 repositories in %2").arg(found).arg(folder));
    QMetaObject::invokeMethod(
        QCoreApplication::instance(),
        [self, found] {
          PreferencesNotifier::shared().post(PreferencesNotifier::Notification::repositoryManagerDataUpdated);
          if (!self) return;
          Q_EMIT self->welcomeCompleted(found);
          self->close();
        },
        Qt::QueuedConnection);
  });
}
