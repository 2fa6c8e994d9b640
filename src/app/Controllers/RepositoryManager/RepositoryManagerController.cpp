#include "Controllers/RepositoryManager/RepositoryManagerController.h"

#include <QAction>
#include <QCoreApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFileDialog>
#include <QHBoxLayout>
#include <QLabel>
#include <QLocale>
#include <QMenu>
#include <QMessageBox>
#include <QProgressBar>
#include <QPushButton>
#include <QSplitter>
#include <QTextBrowser>
#include <QThreadPool>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

#include "Commands/ShowInFolderCommand.h"
#include "Controllers/RepositoryManager/RepositoryColorTags.h"
#include "Controllers/RepositoryManager/RepositoryManagerTreeWidget.h"
#include "Models/AppSettings.h"
#include "Models/RepositoryManager/RepositoryManagerTree.h"
#include "Models/RepositoryReadme.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"
#include "Services/RepositoryRescanner.h"
#include "Services/RepositoryScan.h"

namespace {
using Kind = RepositoryManagerDrop::Kind;
using Node = RepositoryManagerDrop::Node;

// "~/src/jelv" for a folder below the home folder: shorter, and what users type.
QString homeRelative(const QString& path) {
  const QString home = QDir::homePath();
  if (path.startsWith(home + QLatin1Char('/'))) return QStringLiteral("~") + path.mid(home.size());
  return QDir::toNativeSeparators(path);
}

bool isRepository(const Node& node) { return node.kind == Kind::repository || node.kind == Kind::recentRepository; }

QToolButton* toolButton(const QString& text, const QString& tip, QWidget* parent) {
  auto* button = new QToolButton(parent);
  button->setText(text);
  button->setToolTip(tip);
  button->setAutoRaise(true);
  button->setToolButtonStyle(Qt::ToolButtonTextOnly);
  return button;
}
}  // namespace

RepositoryManagerController::RepositoryManagerController(AppSettings& settings, QWidget* parent)
    : QWidget(parent), settings_(settings) {
  tree_ = new RepositoryManagerTreeWidget(this);
  tree_->setContextMenuPolicy(Qt::CustomContextMenu);

  auto* openButton = toolButton(tr("Open…"), tr("Open a repository from a folder"), this);
  auto* addButton = toolButton(tr("Add…"), tr("Add a repository from a folder to the list (Ctrl+Shift+A)"), this);
  auto* cloneButton = toolButton(tr("Clone…"), tr("Clone a repository from a URL into a new folder"), this);
  cloneButton->setObjectName(QStringLiteral("cloneButton"));
  auto* categoryButton = toolButton(tr("New Category"), tr("Create a category (Ctrl+Shift+N)"), this);
  rescanButton_ = toolButton(tr("Rescan"), {}, this);
  auto* buttons = new QHBoxLayout;
  buttons->setContentsMargins(4, 4, 4, 0);
  buttons->setSpacing(2);
  buttons->addWidget(openButton);
  buttons->addWidget(addButton);
  buttons->addWidget(cloneButton);
  buttons->addWidget(categoryButton);
  buttons->addStretch(1);
  buttons->addWidget(rescanButton_);

  progress_ = new QProgressBar(this);
  progress_->setMaximumHeight(12);
  progress_->setTextVisible(false);
  progressLabel_ = new QLabel(this);
  progressLabel_->setForegroundRole(QPalette::PlaceholderText);
  auto* progressRow = new QVBoxLayout;
  progressRow->setContentsMargins(6, 0, 6, 6);
  progressRow->addWidget(progressLabel_);
  progressRow->addWidget(progress_);
  progress_->hide();
  progressLabel_->hide();

  auto* left = new QWidget(this);
  auto* leftLayout = new QVBoxLayout(left);
  leftLayout->setContentsMargins(0, 0, 0, 0);
  leftLayout->setSpacing(4);
  leftLayout->addLayout(buttons);
  leftLayout->addWidget(tree_, 1);
  leftLayout->addLayout(progressRow);

  auto* splitter = new QSplitter(Qt::Horizontal, this);
  splitter->addWidget(left);
  splitter->addWidget(makeDetails());
  splitter->setStretchFactor(0, 0);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({320, 700});
  splitter->setChildrenCollapsible(false);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(splitter);

  // Keys that work anywhere in the tab.
  auto shortcut = [this](const QKeySequence& keys, auto slot) {
    auto* action = new QAction(this);
    action->setShortcut(keys);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    connect(action, &QAction::triggered, this, slot);
    addAction(action);
  };
  shortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_A), &RepositoryManagerController::chooseRepositoryToAdd);
  shortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_N), &RepositoryManagerController::createCategory);
  shortcut(QKeySequence(Qt::Key_F5), &RepositoryManagerController::startRescan);

  connect(openButton, &QToolButton::clicked, this, &RepositoryManagerController::openDocumentRequested);
  connect(addButton, &QToolButton::clicked, this, &RepositoryManagerController::chooseRepositoryToAdd);
  connect(cloneButton, &QToolButton::clicked, this, &RepositoryManagerController::cloneRequested);
  connect(categoryButton, &QToolButton::clicked, this, &RepositoryManagerController::createCategory);
  connect(rescanButton_, &QToolButton::clicked, this, &RepositoryManagerController::startRescan);
  connect(tree_, &RepositoryManagerTreeWidget::openRequested, this, &RepositoryManagerController::openRepositoryRequested);
  connect(tree_, &RepositoryManagerTreeWidget::dropRequested, this, &RepositoryManagerController::applyDrop);
  connect(tree_, &RepositoryManagerTreeWidget::renameRequested, this, &RepositoryManagerController::rename);
  connect(tree_, &RepositoryManagerTreeWidget::deleteRequested, this, &RepositoryManagerController::confirmDelete);
  connect(tree_, &RepositoryManagerTreeWidget::pathsDropped, this, &RepositoryManagerController::addRepositories);
  connect(tree_, &QWidget::customContextMenuRequested, this, &RepositoryManagerController::showContextMenu);
  connect(tree_, &QTreeWidget::currentItemChanged, this, &RepositoryManagerController::updateDetails);
  connect(showButton_, &QPushButton::clicked, this, [this] {
    if (QTreeWidgetItem* item = tree_->currentItem(); item && isRepository(RepositoryManagerTreeWidget::node(item))) {
      ShowInFolderCommand::execute(this, item->data(0, RepositoryManagerTreeWidget::PathRole).toString());
    }
  });
  connect(openButton_, &QPushButton::clicked, this, [this] {
    if (QTreeWidgetItem* item = tree_->currentItem(); item && isRepository(RepositoryManagerTreeWidget::node(item))) {
      Q_EMIT openRepositoryRequested(item->data(0, RepositoryManagerTreeWidget::PathRole).toString());
    }
  });

  // Queued: a change can come from inside the tree's own event handling (an edit being
  // committed, a drop), and the rebuild deletes the items involved.
  connect(&PreferencesNotifier::shared(), &PreferencesNotifier::repositoryManagerDataUpdated, this,
          &RepositoryManagerController::reload, Qt::QueuedConnection);
  connect(&PreferencesNotifier::shared(), &PreferencesNotifier::valueChanged, this, [this](const QString& key) {
    if (key == QStringLiteral("defaultSourceFolder")) updateRescanButton();
  });

  auto& rescanner = RepositoryRescanner::shared();
  connect(&rescanner, &RepositoryRescanner::started, this, [this](const QString& folder) {
    progressLabel_->setText(tr("Scanning %1…").arg(QDir::toNativeSeparators(folder)));
    progress_->setRange(0, 0);
    progress_->show();
    progressLabel_->show();
    updateRescanButton();
  });
  connect(&rescanner, &RepositoryRescanner::progressChanged, this, [this](int done, int total) {
    if (total > 0) progress_->setRange(0, total);
    progress_->setValue(done);
  });
  connect(&rescanner, &RepositoryRescanner::finished, this, [this](int) {
    progress_->hide();
    progressLabel_->hide();
    updateRescanButton();
  });

  updateRescanButton();
  reload();
  setFocusProxy(tree_);
}

QWidget* RepositoryManagerController::makeDetails() {
  auto* details = new QWidget(this);
  detailsTitle_ = new QLabel(details);
  QFont titleFont = detailsTitle_->font();
  titleFont.setPointSizeF(titleFont.pointSizeF() * 1.6);
  titleFont.setBold(true);
  detailsTitle_->setFont(titleFont);
  detailsTitle_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  detailsPath_ = new QLabel(details);
  detailsPath_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  detailsPath_->setWordWrap(true);
  detailsInfo_ = new QLabel(details);
  detailsInfo_->setEnabled(false);
  openButton_ = new QPushButton(tr("Open"), details);
  openButton_->setDefault(true);
  showButton_ = new QPushButton(tr("Show in File Manager"), details);
  readme_ = new QTextBrowser(details);
  readme_->setObjectName(QStringLiteral("readme"));
  readme_->setOpenExternalLinks(true);
  readme_->setFrameShape(QFrame::NoFrame);
  readme_->viewport()->setAutoFillBackground(false);

  detailsBox_ = new QWidget(details);
  auto* box = new QVBoxLayout(detailsBox_);
  box->setContentsMargins(0, 0, 0, 0);
  box->setSpacing(6);
  box->addWidget(detailsTitle_);
  box->addWidget(detailsPath_);
  box->addWidget(detailsInfo_);
  auto* buttonRow = new QHBoxLayout;
  buttonRow->addWidget(openButton_);
  buttonRow->addWidget(showButton_);
  buttonRow->addStretch(1);
  box->addSpacing(8);
  box->addLayout(buttonRow);
  auto* rule = new QFrame(detailsBox_);
  rule->setFrameShape(QFrame::HLine);
  rule->setFrameShadow(QFrame::Sunken);
  box->addSpacing(8);
  box->addWidget(rule);
  box->addWidget(readme_, 1);

  emptyLabel_ = new QLabel(details);
  emptyLabel_->setAlignment(Qt::AlignCenter);
  emptyLabel_->setWordWrap(true);
  emptyLabel_->setEnabled(false);

  auto* layout = new QVBoxLayout(details);
  layout->setContentsMargins(24, 20, 24, 12);
  layout->addWidget(detailsBox_, 1);
  layout->addWidget(emptyLabel_, 1);
  return details;
}

void RepositoryManagerController::reload() {
  tree_->setTree(RepositoryManagerTree::load(settings_));
  updateDetails();
}

void RepositoryManagerController::updateDetails() {
  QTreeWidgetItem* item = tree_->currentItem();
  const Node node = RepositoryManagerTreeWidget::node(item);
  if (!item || !isRepository(node)) {
    detailsBox_->hide();
    emptyLabel_->show();
    emptyLabel_->setText(tree_->repositoriesSection()->childCount() == 0
                             ? tr("No repositories yet. Add one with “Add…”, drop a folder here, or set a source "
                                  "folder in the preferences and rescan it.")
                             : tr("Select a repository to see where it is. Double-click it or press Return to open it."));
    return;
  }
  emptyLabel_->hide();
  detailsBox_->show();
  detailsTitle_->setText(item->text(0));
  const QString path = item->data(0, RepositoryManagerTreeWidget::PathRole).toString();
  const bool pathChanged = detailsPath_->toolTip() != path;
  detailsPath_->setText(homeRelative(path));
  detailsPath_->setToolTip(path);
  if (pathChanged) loadReadme(path);

  QStringList info;
  for (const RepositoryRecordPtr& record : settings_.getRepositories()) {
    if (record->id != node.id) continue;
    if (record->categoryName) info << tr("Category: %1").arg(*record->categoryName);
    info << (record->lastOpened
                 ? tr("Last opened: %1").arg(QLocale().toString(record->lastOpened->toLocalTime(), QLocale::ShortFormat))
                 : tr("Never opened"));
    if (RepositoryColorTags::isValid(record->colorTag)) info << tr("Tag: %1").arg(RepositoryColorTags::name(*record->colorTag));
    break;
  }
  detailsInfo_->setText(info.join(QStringLiteral("   ·   ")));
}

void RepositoryManagerController::loadReadme(const QString& repositoryPath) {
  // Read in the background: the folder may lie on a slow disk. Only the newest request
  // is shown.
  const int generation = ++readmeGeneration_;
  readme_->clear();
  readme_->hide();
  QPointer<RepositoryManagerController> self(this);
  QThreadPool::globalInstance()->start([self, generation, repositoryPath] {
    std::optional<QString> html;
    if (const auto file = RepositoryReadme::find(repositoryPath)) html = RepositoryReadme::html(*file);
    QMetaObject::invokeMethod(
        qApp,
        [self, generation, html] {
          if (!self || generation != self->readmeGeneration_ || !html) return;
          self->readme_->setHtml(*html);
          self->readme_->show();
          Q_EMIT self->readmeShown();
        },
        Qt::QueuedConnection);
  });
}

void RepositoryManagerController::updateRescanButton() {
  const auto folder = Preferences::shared().defaultSourceFolder();
  const bool running = RepositoryRescanner::shared().isRunning();
  rescanButton_->setEnabled(folder && !folder->isEmpty() && !running);
  rescanButton_->setToolTip(folder && !folder->isEmpty()
                                ? tr("Find the repositories in %1 again (F5)").arg(QDir::toNativeSeparators(*folder))
                                : tr("Set a source folder in the preferences to rescan it"));
}

void RepositoryManagerController::startRescan() { RepositoryRescanner::shared().start(settings_); }

void RepositoryManagerController::changed(bool repositoryInfoToo) {
  auto& notifier = PreferencesNotifier::shared();
  notifier.post(PreferencesNotifier::Notification::repositoryManagerDataUpdated);
  if (repositoryInfoToo) notifier.post(PreferencesNotifier::Notification::repositoryInfoChanged);
}

void RepositoryManagerController::applyDrop(const Node& dragged, const Node& target, RepositoryManagerDrop::Position position) {
  if (RepositoryManagerDrop::apply(settings_, dragged, target, position)) changed();
}

void RepositoryManagerController::rename(const Node& node, const QString& name) {
  if (name.isEmpty()) {
    reload();  // back to the old name
    return;
  }
  if (node.kind == Kind::category) {
    settings_.renameCategory(node.id, name);
    changed();
  } else if (isRepository(node)) {
    settings_.renameRepository(node.id, name);
    changed(true);
  }
}

void RepositoryManagerController::setColorTag(int64_t repositoryId, std::optional<int> colorTag) {
  settings_.setRepositoryColorTag(repositoryId, colorTag);
  changed(true);
}

void RepositoryManagerController::createCategory() {
  std::optional<int64_t> parent;
  if (QTreeWidgetItem* item = tree_->currentItem()) {
    const Node node = RepositoryManagerTreeWidget::node(item);
    if (node.kind == Kind::category) parent = node.id;
  }
  const int64_t id = settings_.createCategory(tr("New Category"), parent);
  changed();
  // After the queued reload has made the item.
  QMetaObject::invokeMethod(
      this,
      [this, id] {
        if (QTreeWidgetItem* item = tree_->findItem({Kind::category, id})) {
          tree_->setCurrentItem(item);
          tree_->editItem(item);
        }
      },
      Qt::QueuedConnection);
}

void RepositoryManagerController::confirmDelete(const Node& node) {
  QTreeWidgetItem* item = tree_->findItem(node);
  if (!item || !(node.kind == Kind::category || isRepository(node))) return;
  auto* box = new QMessageBox(this);
  box->setAttribute(Qt::WA_DeleteOnClose);
  box->setIcon(QMessageBox::Warning);
  QPushButton* remove = nullptr;
  if (node.kind == Kind::category) {
    box->setText(tr("Delete the category “%1”?").arg(item->text(0)));
    box->setInformativeText(tr("Included repositories will be moved to the root."));
    remove = box->addButton(tr("Delete"), QMessageBox::DestructiveRole);
  } else {
    box->setText(tr("Remove “%1” from the list?").arg(item->text(0)));
    box->setInformativeText(tr("The folder %1 stays on disk as it is.")
                                .arg(QDir::toNativeSeparators(item->data(0, RepositoryManagerTreeWidget::PathRole).toString())));
    remove = box->addButton(tr("Remove"), QMessageBox::DestructiveRole);
  }
  box->addButton(QMessageBox::Cancel);
  box->setDefaultButton(QMessageBox::Cancel);
  connect(box, &QMessageBox::buttonClicked, this, [this, node, remove](QAbstractButton* clicked) {
    if (clicked != remove) return;
    if (node.kind == Kind::category) {
      settings_.deleteRepositoryCategory(node.id);
    } else {
      settings_.deleteRepository(node.id);
    }
    changed();
  });
  box->open();
}

void RepositoryManagerController::chooseRepositoryToAdd() {
  const QString start = Preferences::shared().defaultSourceFolder().value_or(QDir::homePath());
  const QString folder = QFileDialog::getExistingDirectory(this, tr("Add a Repository"), start);
  if (!folder.isEmpty()) addRepositories({folder});
}

void RepositoryManagerController::addRepositories(const QStringList& paths) {
  QPointer<RepositoryManagerController> self(this);
  AppSettings* settings = &settings_;
  const auto sourceFolder = Preferences::shared().defaultSourceFolder();
  QThreadPool::globalInstance()->start([self, settings, paths, sourceFolder] {
    const auto refused = RepositoryScan::addRepositories(*settings, paths, sourceFolder);
    QMetaObject::invokeMethod(
        qApp,
        [self, refused] {
          PreferencesNotifier::shared().post(PreferencesNotifier::Notification::repositoryManagerDataUpdated);
          if (!self) return;
          if (!refused.empty()) {
            // One alert for all refusals, titled by the first.
            QStringList messages;
            for (const auto& r : refused) messages << RepositoryValidation::alertMessage(r.refusal, r.path);
            auto* box = new QMessageBox(QMessageBox::Warning, RepositoryValidation::alertTitle(refused.front().refusal),
                                        messages.join(QLatin1Char('\n')), QMessageBox::Ok, self);
            box->setAttribute(Qt::WA_DeleteOnClose);
            box->open();
          }
          Q_EMIT self->addFinished(int(refused.size()));
        },
        Qt::QueuedConnection);
  });
}

void RepositoryManagerController::addMoveMenu(QMenu& menu, const Node& node) {
  // The keyboard's way to file an entry: the same as a drop onto the folder.
  QMenu* moveTo = menu.addMenu(tr("Move To"));
  moveTo->addAction(tr("Top Level"), this,
                    [this, node] { applyDrop(node, {Kind::repositoriesSection, 0}, RepositoryManagerDrop::Position::onItem); });
  for (const CategoryRecord& category : settings_.getCategories()) {
    if (node.kind == Kind::category && category.id == node.id) continue;
    moveTo->addAction(category.name, this,
                      [this, node, id = category.id] { applyDrop(node, {Kind::category, id}, RepositoryManagerDrop::Position::onItem); });
  }
}

void RepositoryManagerController::showContextMenu(const QPoint& viewportPoint) {
  // Empty space is no repository: the selection is not what was clicked.
  QTreeWidgetItem* item = tree_->itemAt(viewportPoint);
  const Node node = RepositoryManagerTreeWidget::node(item);
  QMenu menu(this);
  if (item && isRepository(node)) {
    const QString path = item->data(0, RepositoryManagerTreeWidget::PathRole).toString();
    menu.addAction(tr("Open"), this, [this, path] { Q_EMIT openRepositoryRequested(path); });
    menu.addAction(tr("Show in File Manager"), this, [this, path] { ShowInFolderCommand::execute(this, path); });
    menu.addSeparator();
    menu.addAction(tr("Rename"), this, [this, item] { tree_->editItem(item); });
    QMenu* tags = menu.addMenu(tr("Colour Tag"));
    const QVariant current = item->data(0, RepositoryManagerTreeWidget::ColorTagRole);
    QAction* none = tags->addAction(tr("None"), this, [this, node] { setColorTag(node.id, std::nullopt); });
    none->setCheckable(true);
    none->setChecked(!current.isValid());
    for (int i = 0; i < RepositoryColorTags::count(); ++i) {
      QAction* tag = tags->addAction(RepositoryColorTags::icon(i), RepositoryColorTags::name(i), this,
                                     [this, node, i] { setColorTag(node.id, i); });
      tag->setCheckable(true);
      tag->setChecked(current.isValid() && current.toInt() == i);
    }
    if (node.kind == Kind::repository) addMoveMenu(menu, node);
    menu.addSeparator();
    menu.addAction(tr("Remove from List…"), this, [this, node] { confirmDelete(node); });
  } else if (item && node.kind == Kind::category) {
    menu.addAction(tr("New Category Inside"), this, &RepositoryManagerController::createCategory);
    menu.addAction(tr("Rename"), this, [this, item] { tree_->editItem(item); });
    menu.addAction(tr("Move Up"), this, [this, item] { tree_->moveCategory(item, true); })->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Up));
    menu.addAction(tr("Move Down"), this, [this, item] { tree_->moveCategory(item, false); })->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Down));
    addMoveMenu(menu, node);
    menu.addSeparator();
    menu.addAction(tr("Delete Category…"), this, [this, node] { confirmDelete(node); });
  } else {
    menu.addAction(tr("Add Repository…"), this, &RepositoryManagerController::chooseRepositoryToAdd);
    menu.addAction(tr("New Category"), this, &RepositoryManagerController::createCategory);
  }
  const QRect rect = item ? tree_->visualItemRect(item) : QRect();
  const QPoint at = tree_->viewport()->rect().contains(viewportPoint) ? viewportPoint : rect.bottomLeft();
  menu.exec(tree_->viewport()->mapToGlobal(at));
}
