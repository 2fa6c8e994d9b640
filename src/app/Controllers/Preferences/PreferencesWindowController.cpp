#include "Controllers/Preferences/PreferencesWindowController.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QFontComboBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QShowEvent>
#include <QSpinBox>
#include <QTabWidget>
#include <QThreadPool>
#include <QVBoxLayout>

#include "Commands/InstallCliToolCommand.h"
#include "Controllers/Preferences/PreferenceControls.h"
#include "Controls/GitOutputView.h"
#include "Services/CustomCommandManager.h"
#include "UI/CustomCommands/CustomCommandListController.h"
#include "Services/MergeTool.h"
#include "Services/Preferences.h"
#include "Services/RepositoryRescanner.h"
#include "Services/UrlSchemeHandlerRegistry.h"
#include "UI/Appearance.h"
#include "Controls/WindowKeys.h"

namespace {
using Notification = PreferencesNotifier::Notification;

QFormLayout* form(QWidget* page) {
  auto* layout = new QFormLayout(page);
  layout->setContentsMargins(20, 16, 20, 16);
  layout->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
  layout->setLabelAlignment(Qt::AlignRight | Qt::AlignVCenter);
  layout->setVerticalSpacing(10);
  return layout;
}

// Numbers and choices keep their natural width; only paths stretch.
template <typename W>
W* natural(W* widget) {
  widget->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  return widget;
}

// The label of a row whose field is a layout: its mnemonic goes to the main control.
QLabel* buddyLabel(const QString& text, QWidget* buddy) {
  auto* label = new QLabel(text, buddy->parentWidget());
  label->setBuddy(buddy);
  return label;
}

QLabel* note(const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setWordWrap(true);
  label->setForegroundRole(QPalette::PlaceholderText);
  return label;
}
}  // namespace

PreferencesWindowController::PreferencesWindowController(AppSettings& settings, QWidget* parent)
    : QWidget(parent, Qt::Window), settings_(settings) {
  setWindowTitle(tr("Preferences"));
  controls_ = new PreferenceControls(this);
  tabs_ = new QTabWidget(this);
  tabs_->addTab(makeGeneralPage(), tr("General"));
  tabs_->addTab(makeCommitListPage(), tr("Commit List"));
  tabs_->addTab(makeDiffPage(), tr("Diff"));
  tabs_->addTab(makeStatusPage(), tr("Status Updates"));
  tabs_->addTab(makeIntegrationPage(), tr("Integration"));
  tabs_->addTab(makeCustomCommandsPage(), QStringLiteral("Custom Commands"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(8, 8, 8, 8);
  layout->addWidget(tabs_);
  resize(620, 440);

  WindowKeys::closeOnEscapeAndCtrlW(this);

  auto& rescanner = RepositoryRescanner::shared();
  connect(&rescanner, &RepositoryRescanner::started, this, [this] {
    rescanButton_->setEnabled(false);
    rescanStatus_->setText(tr("Looking for repositories…"));
  });
  connect(&rescanner, &RepositoryRescanner::progressChanged, this, [this](int done, int total) {
    if (total > 0) rescanStatus_->setText(tr("Checking repositories: %1 of %2").arg(done).arg(total));
  });
  connect(&rescanner, &RepositoryRescanner::finished, this, [this](int added) {
    rescanButton_->setEnabled(!sourceFolder_->text().isEmpty());
    rescanStatus_->setText(tr("Found %n repositories.", nullptr, added));
  });
  reload();
}

PreferencesWindowController* PreferencesWindowController::showWindow(AppSettings& settings) {
  static QPointer<PreferencesWindowController> window;
  if (!window) {
    window = new PreferencesWindowController(settings);
    window->setAttribute(Qt::WA_DeleteOnClose);
  }
  window->show();
  window->raise();
  window->activateWindow();
  return window;
}

QWidget* PreferencesWindowController::makeGeneralPage() {
  auto* page = new QWidget(this);
  QFormLayout* layout = form(page);

  sourceFolder_ = new QLineEdit(page);
  sourceFolder_->setObjectName(QStringLiteral("defaultSourceFolder"));
  sourceFolder_->setReadOnly(true);
  sourceFolder_->setPlaceholderText(tr("Not set"));
  auto* choose = new QPushButton(tr("C&hoose…"), page);
  connect(choose, &QPushButton::clicked, this, [this] {
    const QString start = sourceFolder_->text().isEmpty() ? QDir::homePath() : sourceFolder_->text();
    const QString folder = QFileDialog::getExistingDirectory(this, tr("Source Folder"), start);
    if (!folder.isEmpty()) setSourceFolder(folder);
  });
  auto* folderRow = new QHBoxLayout;
  folderRow->addWidget(sourceFolder_, 1);
  folderRow->addWidget(choose);
  layout->addRow(buddyLabel(tr("&Source folder:"), choose), folderRow);

  rescanButton_ = new QPushButton(tr("&Rescan Repositories"), page);
  rescanButton_->setObjectName(QStringLiteral("rescan"));
  rescanStatus_ = note({}, page);
  connect(rescanButton_, &QPushButton::clicked, this, [this] { RepositoryRescanner::shared().start(settings_); });
  auto* rescanRow = new QHBoxLayout;
  rescanRow->addWidget(rescanButton_);
  rescanRow->addWidget(rescanStatus_, 1);
  layout->addRow(QString(), rescanRow);
  layout->addRow(QString(), note(tr("A rescan lists the repositories in the source folder anew, with a category per "
                                    "sub-folder. Categories stay; names and colour tags of the listed repositories "
                                    "are reset."),
                                 page));

  gitInstance_ = natural(new QComboBox(page));
  gitInstance_->setObjectName(QStringLiteral("gitInstanceType"));
  gitInstance_->setSizeAdjustPolicy(QComboBox::AdjustToContents);
  gitStatus_ = note({}, page);
  connect(gitInstance_, &QComboBox::activated, this, &PreferencesWindowController::gitInstanceChosen);
  auto* gitField = new QVBoxLayout;
  gitField->setSpacing(4);
  gitField->addWidget(gitInstance_);
  gitField->addWidget(gitStatus_);
  layout->addRow(buddyLabel(tr("&Git:"), gitInstance_), gitField);

  auto* appearance = natural(new QComboBox(page));
  appearance->addItems({tr("System"), tr("Light"), tr("Dark")});
  controls_->bind(appearance, QStringLiteral("appearance"), std::nullopt);
  connect(appearance, &QComboBox::currentIndexChanged, this, [this](int index) {
    if (controls_->isLoading()) return;
    if (auto* app = qobject_cast<QApplication*>(QCoreApplication::instance()); app && index >= 0) Appearance::apply(*app, index);
  });
  layout->addRow(tr("&Appearance:"), appearance);
  return page;
}

QWidget* PreferencesWindowController::makeCommitListPage() {
  auto* page = new QWidget(this);
  QFormLayout* layout = form(page);
  auto* order = natural(new QComboBox(page));
  order->addItems({tr("Topological (no parent before its children)"), tr("By commit date")});
  controls_->bind(order, QStringLiteral("useTopologicalCommitOrder"), Notification::revisionOrderingChanged, true);
  layout->addRow(tr("&Order:"), order);

  auto* maxCount = natural(new QSpinBox(page));
  maxCount->setRange(100, 10'000'000);
  maxCount->setSingleStep(1000);
  maxCount->setGroupSeparatorShown(true);
  maxCount->setSuffix(tr(" commits"));
  controls_->bind(maxCount, QStringLiteral("maxCommitCount"), Notification::revisionOrderingChanged);
  layout->addRow(tr("&Load at most:"), maxCount);
  layout->addRow(QString(), note(tr("Larger histories show only their newest commits."), page));

  // git's commit-graph file: large histories open faster with it; path filters help
  // file history and path search but cost several times as much to write.
  auto* commitGraph = new QCheckBox(tr("&Keep the commit graph of large repositories up to date"), page);
  commitGraph->setObjectName(QStringLiteral("keepCommitGraphUpToDate"));
  auto* changedPaths = new QCheckBox(tr("Include &path filters (faster file history, slower to write)"), page);
  changedPaths->setObjectName(QStringLiteral("commitGraphChangedPaths"));
  const auto load = [commitGraph, changedPaths] {
    const QSignalBlocker blockGraph(commitGraph);
    const QSignalBlocker blockPaths(changedPaths);
    commitGraph->setChecked(Preferences::shared().keepCommitGraphUpToDate());
    changedPaths->setChecked(Preferences::shared().commitGraphChangedPaths());
    changedPaths->setEnabled(commitGraph->isChecked());
  };
  load();
  controls_->onReload(load);
  connect(commitGraph, &QCheckBox::toggled, this, [changedPaths](bool on) {
    Preferences::shared().setKeepCommitGraphUpToDate(on);
    changedPaths->setEnabled(on);
  });
  connect(changedPaths, &QCheckBox::toggled, this, [](bool on) { Preferences::shared().setCommitGraphChangedPaths(on); });
  layout->addRow(QString(), commitGraph);
  layout->addRow(QString(), changedPaths);
  return page;
}

QWidget* PreferencesWindowController::makeDiffPage() {
  auto* page = new QWidget(this);
  QFormLayout* layout = form(page);
  auto* context = natural(new QSpinBox(page));
  context->setRange(0, 1000);
  context->setSuffix(tr(" lines"));
  controls_->bind(context, QStringLiteral("contextSize"), Notification::diffContextSizeChanged);
  layout->addRow(tr("&Context:"), context);

  auto* entireFile = new QCheckBox(tr("Show the &entire file"), page);
  controls_->bind(entireFile, QStringLiteral("diffShowEntireFile"), Notification::diffContextSizeChanged);
  connect(entireFile, &QCheckBox::toggled, context, [context](bool on) { context->setEnabled(!on); });
  controls_->onReload([context, entireFile] { context->setEnabled(!entireFile->isChecked()); });
  layout->addRow(QString(), entireFile);

  auto* whitespace = new QCheckBox(tr("Ignore &white space"), page);
  controls_->bind(whitespace, QStringLiteral("diffIgnoreWhitespaces"), Notification::diffIgnoreWhitespacesChanged);
  layout->addRow(QString(), whitespace);
  auto* wrap = new QCheckBox(tr("Wrap &long lines"), page);
  controls_->bind(wrap, QStringLiteral("diffWordWrapKey"), Notification::diffTextViewWordWrapChanged);
  layout->addRow(QString(), wrap);
  auto* hidden = new QCheckBox(tr("Show &hidden symbols"), page);
  controls_->bind(hidden, QStringLiteral("diffShowHiddenSymbols"), Notification::diffShowHiddenSymbolsChanged);
  layout->addRow(QString(), hidden);

  fontFamily_ = new QFontComboBox(page);
  fontFamily_->setObjectName(QStringLiteral("diffFontName"));
  fontFamily_->setFontFilters(QFontComboBox::MonospacedFonts);
  fontSize_ = natural(new QSpinBox(page));
  fontSize_->setObjectName(QStringLiteral("diffFontSize"));
  fontSize_->setRange(6, 72);
  fontSize_->setSuffix(tr(" pt"));
  fontSize_->setKeyboardTracking(false);
  connect(fontFamily_, &QFontComboBox::currentFontChanged, this, &PreferencesWindowController::fontChanged);
  connect(fontSize_, &QSpinBox::valueChanged, this, &PreferencesWindowController::fontChanged);
  auto* fontRow = new QHBoxLayout;
  fontRow->addWidget(fontFamily_, 1);
  fontRow->addWidget(fontSize_);
  layout->addRow(buddyLabel(tr("&Font:"), fontFamily_), fontRow);

  // The outside diff tool: the ones installed on this machine, and a program of the user's.
  diffTool_ = natural(new QComboBox(page));
  diffTool_->setObjectName(QStringLiteral("externalDiffTool"));
  connect(diffTool_, &QComboBox::activated, this, [this] {
    if (loadingDiffTool_ || diffTool_->currentIndex() < 0) return;
    Preferences::shared().setExternalDiffTool(diffTool_->currentData().toInt());
    loadDiffTool();
  });
  layout->addRow(tr("External diff &tool:"), diffTool_);
  diffToolPath_ = new QLineEdit(page);
  diffToolPath_->setObjectName(QStringLiteral("externalDiffToolCustomPath"));
  diffToolPath_->setPlaceholderText(tr("A program on PATH or its full path"));
  connect(diffToolPath_, &QLineEdit::textEdited, this,
          [](const QString& text) { Preferences::shared().setExternalDiffToolCustomPath(text.trimmed()); });
  diffToolBrowse_ = new QPushButton(tr("Choose…"), page);
  diffToolBrowse_->setAutoDefault(false);
  connect(diffToolBrowse_, &QPushButton::clicked, this, [this] {
    const QString path = QFileDialog::getOpenFileName(this, tr("Choose a Diff Program"), QStringLiteral("/usr/bin"));
    if (path.isEmpty()) return;
    diffToolPath_->setText(path);
    Preferences::shared().setExternalDiffToolCustomPath(path);
  });
  auto* pathRow = new QHBoxLayout;
  pathRow->addWidget(diffToolPath_, 1);
  pathRow->addWidget(diffToolBrowse_);
  layout->addRow(buddyLabel(tr("&Program:"), diffToolPath_), pathRow);
  diffToolArguments_ = new QLineEdit(page);
  diffToolArguments_->setObjectName(QStringLiteral("externalDiffToolCustomArguments"));
  diffToolArguments_->setPlaceholderText(QStringLiteral("$LOCAL $REMOTE"));
  connect(diffToolArguments_, &QLineEdit::textEdited, this,
          [](const QString& text) { Preferences::shared().setExternalDiffToolCustomArguments(text); });
  layout->addRow(tr("&Arguments:"), diffToolArguments_);
  layout->addRow(QString(), note(QStringLiteral("Available variables: $LOCAL, $REMOTE"), page));
  controls_->onReload([this] { loadDiffTool(); });
  return page;
}

void PreferencesWindowController::loadDiffTool() {
  loadingDiffTool_ = true;
  Preferences& preferences = Preferences::shared();
  const std::optional<MergeTool::Kind> stored = MergeTool::kindFromIndex(preferences.externalDiffTool());
  std::vector<MergeTool::Kind> kinds = MergeTool::installedKinds();
  diffTool_->clear();
  bool storedListed = false;
  for (MergeTool::Kind kind : kinds) {
    diffTool_->addItem(MergeTool::name(kind), int(kind));
    storedListed = storedListed || stored == kind;
  }
  // The stored choice stays visible even when its program has gone, so that nothing
  // changes behind the user's back.
  if (stored && *stored != MergeTool::Kind::custom && !storedListed) {
    diffTool_->addItem(tr("%1 (not found)").arg(MergeTool::name(*stored)), int(*stored));
  }
  diffTool_->addItem(MergeTool::name(MergeTool::Kind::custom), int(MergeTool::Kind::custom));
  diffTool_->setCurrentIndex(stored ? diffTool_->findData(int(*stored)) : -1);
  const bool custom = stored == MergeTool::Kind::custom;
  diffToolPath_->setText(preferences.externalDiffToolCustomPath());
  diffToolArguments_->setText(preferences.externalDiffToolCustomArguments());
  for (QWidget* field : {static_cast<QWidget*>(diffToolPath_), static_cast<QWidget*>(diffToolBrowse_),
                         static_cast<QWidget*>(diffToolArguments_)}) {
    field->setEnabled(custom);
  }
  loadingDiffTool_ = false;
}

QWidget* PreferencesWindowController::makeStatusPage() {
  auto* page = new QWidget(this);
  QFormLayout* layout = form(page);
  auto* enabled = new QCheckBox(tr("&Update the status of listed repositories automatically"), page);
  controls_->bind(enabled, QStringLiteral("disableAutomaticStatusUpdate"), Notification::updateRepoStatusAutomaticallyChanged, true);
  layout->addRow(enabled);
  auto* interval = natural(new QSpinBox(page));
  interval->setRange(5, 24 * 60 * 60);
  interval->setSuffix(tr(" seconds"));
  controls_->bind(interval, QStringLiteral("automaticStatusUpdateInterval"), Notification::updateRepoStatusAutomaticallyChanged);
  connect(enabled, &QCheckBox::toggled, interval, &QWidget::setEnabled);
  controls_->onReload([interval, enabled] { interval->setEnabled(enabled->isChecked()); });
  layout->addRow(tr("&Every:"), interval);
  return page;
}

QWidget* PreferencesWindowController::makeCustomCommandsPage() {
  auto* page = new QWidget(this);
  auto* layout = new QVBoxLayout(page);
  layout->addWidget(note(tr("Your own entries for the menus of every repository: a program to run, a URL to open, or a "
                            "small dialog. A repository adds its own in .jelv/custom-commands.json (shared with the "
                            "repository) and .git/jelv/custom-commands.json (yours only)."),
                         page));
  customCommands_ = new CustomCommandListController(false, page);
  customCommands_->setCommands(CustomCommandManager::shared().customCommands());
  // Saved at each change: menus read the list when they open.
  connect(customCommands_, &CustomCommandListController::changed, this,
          [](const CustomCommandList& commands) { CustomCommandManager::shared().setCustomCommands(commands); });
  layout->addWidget(customCommands_, 1);
  return page;
}

QWidget* PreferencesWindowController::makeIntegrationPage() {
  auto* page = new QWidget(this);
  QFormLayout* layout = form(page);
  auto* explanation = new QLabel(tr("Links that open a repository (github-mac://) or clone one (sourcetree://) can open "
                                    "in Jelv. The choice is kept in your desktop's mimeapps.list."),
                                 page);
  explanation->setWordWrap(true);
  layout->addRow(explanation);
  for (const QString& scheme : {QStringLiteral("github-mac"), QStringLiteral("sourcetree")}) {
    auto* row = new QWidget(page);
    auto* rowLayout = new QHBoxLayout(row);
    rowLayout->setContentsMargins(0, 0, 0, 0);
    auto* state = new QLabel(row);
    auto* button = new QPushButton(tr("Make Jelv the Default"), row);
    button->setObjectName(scheme + QStringLiteral("DefaultButton"));
    state->setObjectName(scheme + QStringLiteral("DefaultState"));
    rowLayout->addWidget(state, 1);
    rowLayout->addWidget(button);
    auto show = [state, button, scheme] {
      const bool isDefault = UrlSchemeHandlerRegistry::isDefaultHandler(scheme);
      state->setText(isDefault ? tr("Jelv opens these links") : tr("Another application or none opens these links"));
      button->setEnabled(!isDefault);
    };
    connect(button, &QPushButton::clicked, this, [this, scheme, show] {
      if (!UrlSchemeHandlerRegistry::setDefaultHandler(scheme)) {
        QMessageBox::warning(this, tr("Integration"),
                             tr("Cannot write %1.").arg(QDir::toNativeSeparators(UrlSchemeHandlerRegistry::mimeAppsPath())));
      }
      show();
    });
    controls_->onReload(show);
    show();
    layout->addRow(scheme + QStringLiteral("://"), row);
  }
  layout->addRow(tr("Command line tool:"), makeCliToolRow(page));
  return page;
}

QWidget* PreferencesWindowController::makeCliToolRow(QWidget* page) {
  auto* row = new QWidget(page);
  auto* rowLayout = new QHBoxLayout(row);
  rowLayout->setContentsMargins(0, 0, 0, 0);
  auto* state = new QLabel(row);
  state->setObjectName(QStringLiteral("cliToolState"));
  state->setWordWrap(true);
  auto* install = new QPushButton(tr("Install"), row);
  install->setObjectName(QStringLiteral("cliToolInstallButton"));
  auto* uninstall = new QPushButton(tr("Uninstall"), row);
  uninstall->setObjectName(QStringLiteral("cliToolUninstallButton"));
  rowLayout->addWidget(state, 1);
  rowLayout->addWidget(install);
  rowLayout->addWidget(uninstall);
  auto show = [state, install, uninstall] {
    const CliToolInstaller tool = InstallCliToolCommand::installer();
    const CliToolInstaller::State current = tool.state();
    if (!tool.toolExists()) {
      state->setText(tr("The jelv tool is not beside the application (%1).").arg(tool.toolPath()));
    } else if (current == CliToolInstaller::State::installed) {
      state->setText(tr("The jelv command is installed as %1.").arg(tool.linkPath()));
    } else if (current == CliToolInstaller::State::otherFile) {
      state->setText(tr("Another file is at %1.").arg(tool.linkPath()));
    } else {
      state->setText(tr("Install %1 to open repositories from a terminal: jelv, jelv status, jelv log FILE.").arg(tool.linkPath()));
    }
    install->setEnabled(tool.toolExists() && current != CliToolInstaller::State::installed);
    uninstall->setEnabled(current == CliToolInstaller::State::installed);
  };
  connect(install, &QPushButton::clicked, this, [this, show] { InstallCliToolCommand::execute(this, true, show); });
  connect(uninstall, &QPushButton::clicked, this, [this, show] { InstallCliToolCommand::execute(this, false, show); });
  controls_->onReload(show);
  show();
  return row;
}

void PreferencesWindowController::reload() {
  controls_->reload();
  sourceFolder_->setText(QDir::toNativeSeparators(Preferences::shared().defaultSourceFolder().value_or(QString())));
  rescanButton_->setEnabled(!sourceFolder_->text().isEmpty() && !RepositoryRescanner::shared().isRunning());
  loadFont();
  loadGitInstances();
}

void PreferencesWindowController::showEvent(QShowEvent* event) {
  QWidget::showEvent(event);
  // Another window may have changed a key since this one was made.
  if (!event->spontaneous()) reload();
}

void PreferencesWindowController::setSourceFolder(const QString& folder) {
  Preferences::shared().setDefaultSourceFolder(QDir::cleanPath(folder));
  sourceFolder_->setText(QDir::toNativeSeparators(QDir::cleanPath(folder)));
  rescanButton_->setEnabled(!RepositoryRescanner::shared().isRunning());
}

void PreferencesWindowController::loadGitInstances() {
  gitStatus_->setText(tr("Reading the versions of the Git instances…"));
  gitStatus_->show();
  const int generation = ++gitLoadGeneration_;
  QString custom = Preferences::shared().string(QStringLiteral("customGitInstancePath"));
  std::optional<QString> customPath = custom.isEmpty() ? std::nullopt : std::optional<QString>(custom);
  QPointer<PreferencesWindowController> self(this);
  QThreadPool::globalInstance()->start([self, generation, customPath] {
    auto entries = GitInstanceVersions::read(customPath);
    QMetaObject::invokeMethod(
        qApp,
        [self, generation, entries = std::move(entries)] {
          if (self && generation == self->gitLoadGeneration_) self->showGitInstances(entries);
        },
        Qt::QueuedConnection);
  });
}

void PreferencesWindowController::showGitInstances(const std::vector<GitInstanceVersions::Entry>& entries) {
  gitEntries_ = entries;
  const GitInstanceType current = Preferences::shared().gitInstance();
  loadingGit_ = true;
  gitInstance_->clear();
  int selected = -1;
  for (size_t i = 0; i < entries.size(); ++i) {
    gitInstance_->addItem(GitInstanceVersions::title(entries[i]));
    if (entries[i].instance == current) selected = int(i);
  }
  gitInstance_->addItem(tr("Other…"));
  gitInstance_->setCurrentIndex(selected);
  loadingGit_ = false;
  gitStatus_->setText(selected < 0 ? tr("The selected Git (%1) does not answer.").arg(current.launchPath()) : QString());
  gitStatus_->setVisible(!gitStatus_->text().isEmpty());
  Q_EMIT gitInstancesLoaded();
}

void PreferencesWindowController::gitInstanceChosen(int index) {
  if (loadingGit_ || index < 0) return;
  if (index < int(gitEntries_.size())) {
    Preferences::shared().setGitInstance(gitEntries_[size_t(index)].instance);
    return;
  }
  chooseCustomGitInstance();
}

void PreferencesWindowController::chooseCustomGitInstance() {
  const QString path = QFileDialog::getOpenFileName(this, tr("Choose a Git Executable"), QStringLiteral("/usr/local/bin"));
  if (path.isEmpty()) {
    loadGitInstances();  // puts the selection back
    return;
  }
  useCustomGitInstance(path);
}

void PreferencesWindowController::useCustomGitInstance(const QString& path) {
  Preferences::shared().setGitInstance(GitInstanceType::custom(path));
  loadGitInstances();
}

void PreferencesWindowController::loadFont() {
  loadingFont_ = true;
  const QFont font = GitOutputView::codeFont();
  fontFamily_->setCurrentFont(font);
  fontSize_->setValue(font.pointSize() > 0 ? font.pointSize() : 10);
  loadingFont_ = false;
}

void PreferencesWindowController::fontChanged() {
  if (loadingFont_) return;
  Preferences::shared().setDiffFont(fontFamily_->currentFont().family(), fontSize_->value());
  PreferencesNotifier::shared().post(Notification::diffTextViewFontChanged);
}
