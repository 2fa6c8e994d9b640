#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QDir>
#include <QDropEvent>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QTimer>
#include <QLineEdit>
#include <QTextBrowser>
#include <QMessageBox>
#include <QMimeData>
#include <QProgressBar>
#include <QUrl>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include "Controllers/RepositoryManager/RepositoryManagerController.h"
#include "Controllers/RepositoryManager/RepositoryManagerTreeWidget.h"
#include "Models/AppSettings.h"
#include "Services/Preferences.h"
#include "Services/RepositoryRescanner.h"
#include "support/TempRepository.h"
#include "support/Widgets.h"

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace {
using Kind = RepositoryManagerDrop::Kind;
enum class Zone { top, middle, bottom };

// Lets queued reloads run and closed alerts go away.
void settle() {
  QCoreApplication::processEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  QCoreApplication::processEvents();
}

// The tree as indented text: sections and categories end with "/", repositories with
// their colour tag in brackets when they have one.
void describe(QTreeWidgetItem* item, int depth, QStringList& out) {
  QString line = QString(depth * 2, QLatin1Char(' ')) + item->text(0);
  const Kind kind = RepositoryManagerTreeWidget::node(item).kind;
  if (kind == Kind::category || kind == Kind::repositoriesSection || kind == Kind::recentSection) line += QLatin1Char('/');
  const QVariant tag = item->data(0, RepositoryManagerTreeWidget::ColorTagRole);
  if (tag.isValid()) line += QStringLiteral(" [%1]").arg(tag.toInt());
  out << line;
  for (int i = 0; i < item->childCount(); ++i) describe(item->child(i), depth + 1, out);
}
QStringList describe(QTreeWidget& tree) {
  QStringList out;
  for (int i = 0; i < tree.topLevelItemCount(); ++i) describe(tree.topLevelItem(i), 0, out);
  return out;
}

QTreeWidgetItem* findByText(QTreeWidget& tree, const QString& text, Kind kind) {
  QTreeWidgetItemIterator it(&tree);
  for (; *it; ++it) {
    if ((*it)->text(0) == text && RepositoryManagerTreeWidget::node(*it).kind == kind) return *it;
  }
  return nullptr;
}

void clickButton(QMessageBox* box, const QString& text) {
  ASSERT_TRUE(box);
  for (QAbstractButton* button : box->buttons()) {
    if (button->text().remove(QLatin1Char('&')) == text) {
      button->click();
      return;
    }
  }
  ADD_FAILURE() << "no button " << text.toStdString();
}
}  // namespace

// A registry file with a few real folders; the controller is shown so that item
// geometry (for drops) is real.
class ManagerTest : public ::testing::Test {
 protected:
  void SetUp() override {
    dbPath = dir.path() + QStringLiteral("/db.sqlite3");
    settings = std::make_unique<AppSettings>(dbPath);
    // One second later at each use, so that "lastOpened" and positions never tie.
    settings->setClock([t = QDateTime(QDate(2025, 5, 1), QTime(9, 0), Qt::UTC)]() mutable {
      t = t.addSecs(1);
      return t;
    });
    settings->initializeDatabase();
    Preferences::shared().remove(QStringLiteral("defaultSourceFolder"));
  }

  QString folder(const QString& name) const {
    const QString path = dir.path() + QStringLiteral("/disk/") + name;
    QDir().mkpath(path);
    return path;
  }
  int64_t add(const QString& name, std::optional<int64_t> category = std::nullopt) {
    const int64_t id = *settings->addRepository(folder(name));
    if (category) settings->moveRepository(id, category);
    return id;
  }

  RepositoryManagerController& show() {
    controller = std::make_unique<RepositoryManagerController>(*settings);
    controller->resize(900, 700);
    controller->show();
    EXPECT_TRUE(QTest::qWaitForWindowExposed(controller.get()));
    return *controller;
  }
  RepositoryManagerTreeWidget& tree() { return *controller->tree(); }
  QTreeWidgetItem* item(const QString& text, Kind kind = Kind::repository) { return findByText(tree(), text, kind); }

  // Opens the context menu at the viewport's point as the mouse or the menu key would, picks
  // "submenu > entry" when given, and gives the menu's titles.
  QStringList contextMenu(QPoint at, const QString& submenu = {}, const QString& entry = {}) {
    QStringList titles;
    QTimer::singleShot(0, [&] {
      auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
      if (!menu) return;
      for (QAction* action : menu->actions()) {
        titles << action->text();
        if (action->text() != submenu || !action->menu()) continue;
        for (QAction* inner : action->menu()->actions())
          if (inner->text() == entry) inner->trigger();
      }
      menu->close();
    });
    QContextMenuEvent event(QContextMenuEvent::Keyboard, at, tree().viewport()->mapToGlobal(at));
    QCoreApplication::sendEvent(tree().viewport(), &event);
    settle();
    return titles;
  }
  QStringList menuOfCurrent(const QString& submenu = {}, const QString& entry = {}) {
    return contextMenu(tree().visualItemRect(tree().currentItem()).center(), submenu, entry);
  }

  // Drops the dragged item on the target's zone, as the mouse would; gives whether the
  // tree accepted the drag over that spot.
  bool drop(QTreeWidgetItem* dragged, QTreeWidgetItem* target, Zone zone) {
    tree().scrollToItem(target);
    const QRect r = tree().visualItemRect(target);
    const int y = zone == Zone::top ? r.top() + 1 : zone == Zone::bottom ? r.bottom() - 1 : r.center().y();
    const QPointF point(r.center().x(), y);
    std::unique_ptr<QMimeData> data(tree().dragData(dragged));
    EXPECT_TRUE(data);
    if (!data) return false;
    // Move and drop go to the widget that accepted the enter, as in a real drag.
    QDragEnterEvent enter(point.toPoint(), Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(tree().viewport(), &enter);
    QDragMoveEvent move(point.toPoint(), Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(tree().viewport(), &move);
    const bool accepted = move.isAccepted();
    QDropEvent dropEvent(point, Qt::MoveAction, data.get(), Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(tree().viewport(), &dropEvent);
    settle();
    return accepted;
  }

  // The file as another connection sees it.
  std::unique_ptr<AppSettings> reopen() const {
    auto other = std::make_unique<AppSettings>(dbPath);
    other->initializeDatabase();
    return other;
  }
  RepositoryRecordPtr storedRepository(int64_t id) const {
    for (const auto& record : reopen()->getRepositories())
      if (record->id == id) return record;
    return nullptr;
  }

  QTemporaryDir dir;
  QString dbPath;
  std::unique_ptr<AppSettings> settings;
  std::unique_ptr<RepositoryManagerController> controller;
};

// Which rows the sections hold (scanned categories, orphans, the recent five) is the
// registry's business; here: the tree shows it, with tags, and marks a folder that is gone.
TEST_F(ManagerTest, TheTreeShowsTheRegistryAndTheRecentList) {
  const int64_t work = settings->createCategory("Work", std::nullopt);
  const int64_t libs = settings->createCategory("libs", work);
  add("api", work);
  const int64_t zlib = add("zlib", libs);
  settings->setRepositoryColorTag(zlib, 3);
  add("gone");
  QDir(folder("gone")).removeRecursively();

  show();
  EXPECT_EQ(describe(tree()), (QStringList{"Repositories/", "  Work/", "    libs/", "      zlib [3]", "    api", "  gone",
                                           "Recent Repositories/", "  gone", "  zlib [3]", "  api"}))
      << describe(tree()).join(QLatin1Char('\n')).toStdString();
  // A folder that is gone stays listed, marked.
  EXPECT_TRUE(item("gone")->toolTip(0).contains(QStringLiteral("no longer exists")));
  EXPECT_FALSE(item("api")->toolTip(0).contains(QStringLiteral("no longer")));
}

// Where an entry lands is the drop rules' business (tested with them); here: the zone
// under the mouse picks the position, the file and the tree follow, the recent list
// refuses the drag.
TEST_F(ManagerTest, DragAndDropFilesAndReordersInTheDatabase) {
  const int64_t a = settings->createCategory("A", std::nullopt);
  const int64_t b = settings->createCategory("B", std::nullopt);
  const int64_t c = settings->createCategory("C", std::nullopt);
  int position = 0;
  for (const int64_t category : {a, b, c}) settings->moveRepositoryCategory(category, std::nullopt, position++);
  const int64_t app = add("app");
  show();

  // A repository onto the middle of a category goes inside it.
  EXPECT_TRUE(drop(item("app"), item("A", Kind::category), Zone::middle));
  EXPECT_EQ(storedRepository(app)->categoryId, std::optional<int64_t>(a));
  EXPECT_EQ(item("app")->parent()->text(0), QStringLiteral("A"));
  // A category dropped on the upper edge of another goes before it.
  EXPECT_TRUE(drop(item("C", Kind::category), item("A", Kind::category), Zone::top));
  QStringList order;
  for (const CategoryRecord& category : reopen()->getCategories()) order << category.name;
  EXPECT_EQ(order, (QStringList{"C", "A", "B"}));

  const QStringList before = describe(tree());
  EXPECT_FALSE(drop(item("app"), tree().recentSection(), Zone::middle));
  EXPECT_EQ(describe(tree()), before);
}

TEST_F(ManagerTest, DeleteAsksFirstAndNeverTouchesTheDisk) {
  const int64_t outer = settings->createCategory("Outer", std::nullopt);
  const int64_t inner = settings->createCategory("Inner", outer);
  add("kept", inner);
  const int64_t removed = add("removed");
  show();

  tree().setFocus();
  tree().setCurrentItem(item("removed"));
  QTest::keyClick(&tree(), Qt::Key_Delete);
  QMessageBox* box = openSheet<QMessageBox>(controller.get());
  ASSERT_TRUE(box);
  EXPECT_EQ(box->text(), QStringLiteral("Remove “removed” from the list?"));
  clickButton(box, QStringLiteral("Cancel"));
  settle();
  EXPECT_TRUE(storedRepository(removed));

  controller->confirmDelete({Kind::repository, removed});
  clickButton(openSheet<QMessageBox>(controller.get()), QStringLiteral("Remove"));
  settle();
  EXPECT_FALSE(storedRepository(removed));
  EXPECT_TRUE(QFileInfo(folder("removed")).isDir());
  EXPECT_FALSE(item("removed"));

  // A category's content moves up one level.
  controller->confirmDelete({Kind::category, inner});
  box = openSheet<QMessageBox>(controller.get());
  ASSERT_TRUE(box);
  EXPECT_EQ(box->informativeText(), QStringLiteral("Included repositories will be moved to the root."));
  clickButton(box, QStringLiteral("Delete"));
  settle();
  EXPECT_EQ(item("kept")->parent()->text(0), QStringLiteral("Outer"));
}

// Folders dropped from the file manager are added as the Add button's choice is: each
// path checked, the refused ones named in an alert; a file is not offered at all.
TEST_F(ManagerTest, DroppedFoldersAreValidatedAndTheRefusedOnesReported) {
  TempRepository repository(true, QStringLiteral("service"));
  const QString plain = folder("just-a-folder");
  show();
  QSignalSpy finished(controller.get(), &RepositoryManagerController::addFinished);
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile(repository.path()), QUrl::fromLocalFile(repository.path() + QStringLiteral("/.git/HEAD")),
                QUrl::fromLocalFile(plain)});
  const QPoint point = tree().viewport()->rect().center();
  QDragEnterEvent enter(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(tree().viewport(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent dropEvent(QPointF(point), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(tree().viewport(), &dropEvent);
  ASSERT_TRUE(finished.wait(15000));
  settle();

  const auto rows = reopen()->getRepositories();
  ASSERT_EQ(rows.size(), 1u);
  EXPECT_EQ(rows.front()->repositoryPath, repository.path());
  EXPECT_TRUE(item("service"));
  QMessageBox* alert = openSheet<QMessageBox>(controller.get());
  ASSERT_TRUE(alert);
  EXPECT_EQ(alert->windowTitle(), QStringLiteral("The directory is not a git repository"));
  EXPECT_EQ(alert->text(), QStringLiteral("'") + plain + QStringLiteral("' is not a git repository. Please select a correct path."));
  alert->accept();
}

TEST_F(ManagerTest, RescanShowsProgressAndRebuildsTheTree) {
  QTemporaryDir source;
  runProgram(QStringLiteral("git"), {QStringLiteral("init"), QStringLiteral("-q"), source.path() + QStringLiteral("/team/api")});
  runProgram(QStringLiteral("git"), {QStringLiteral("init"), QStringLiteral("-q"), source.path() + QStringLiteral("/team/web")});
  settings->addRepository(source.path() + QStringLiteral("/team/web"), source.path());
  settings->createCategory("Mine", std::nullopt);
  Preferences::shared().setDefaultSourceFolder(source.path());
  show();

  auto* progress = controller->findChild<QProgressBar*>();
  ASSERT_TRUE(progress);
  EXPECT_FALSE(progress->isVisible());
  QSignalSpy finished(&RepositoryRescanner::shared(), &RepositoryRescanner::finished);
  QTest::keyClick(&tree(), Qt::Key_F5);
  EXPECT_TRUE(progress->isVisible());
  ASSERT_TRUE(finished.wait(20000));
  settle();
  EXPECT_FALSE(progress->isVisible());

  // The tree is rebuilt from the rescanned registry.
  EXPECT_EQ(describe(tree()).mid(0, 5), (QStringList{"Repositories/", "  team/", "    api", "    web", "  Mine/"}))
      << describe(tree()).join(QLatin1Char('\n')).toStdString();
  Preferences::shared().remove(QStringLiteral("defaultSourceFolder"));
}

TEST_F(ManagerTest, KeyboardOpensRepositoriesAndFoldsCategoriesAndRenamesWriteTheRow) {
  const int64_t work = settings->createCategory("Work", std::nullopt);
  const int64_t id = add("api", work);
  show();
  QSignalSpy open(controller.get(), &RepositoryManagerController::openRepositoryRequested);
  tree().setFocus();

  QTreeWidgetItem* category = item("Work", Kind::category);
  tree().setCurrentItem(category);
  ASSERT_TRUE(category->isExpanded());
  QTest::keyClick(&tree(), Qt::Key_Return);
  EXPECT_FALSE(category->isExpanded());
  EXPECT_EQ(open.count(), 0);
  // A rebuild keeps the folded state and the selection.
  controller->reload();
  category = item("Work", Kind::category);
  EXPECT_FALSE(category->isExpanded());
  EXPECT_EQ(tree().currentItem(), category);
  QTest::keyClick(&tree(), Qt::Key_Return);

  // Alt+Down and Alt+Up move a category past its neighbour.
  settings->createCategory("Zeta", std::nullopt);
  controller->reload();
  tree().setCurrentItem(item("Work", Kind::category));
  QTest::keyClick(&tree(), Qt::Key_Down, Qt::AltModifier);
  settle();
  EXPECT_EQ(reopen()->getCategories().front().name, QStringLiteral("Zeta"));
  EXPECT_EQ(tree().currentItem()->text(0), QStringLiteral("Work"));
  QTest::keyClick(&tree(), Qt::Key_Down, Qt::AltModifier);  // already last
  QTest::keyClick(&tree(), Qt::Key_Up, Qt::AltModifier);
  settle();
  EXPECT_EQ(reopen()->getCategories().front().name, QStringLiteral("Work"));

  tree().setCurrentItem(item("api"));
  QTest::keyClick(&tree(), Qt::Key_Return);
  ASSERT_EQ(open.count(), 1);
  EXPECT_EQ(open.at(0).at(0).toString(), folder("api"));

  // Double-click on the recent entry opens the same repository.
  QTreeWidgetItem* recent = item("api", Kind::recentRepository);
  const QPoint center = tree().visualItemRect(recent).center();
  QTest::mouseClick(tree().viewport(), Qt::LeftButton, Qt::NoModifier, center);
  QTest::mouseDClick(tree().viewport(), Qt::LeftButton, Qt::NoModifier, center);
  ASSERT_EQ(open.count(), 2);
  EXPECT_EQ(open.at(1).at(0).toString(), folder("api"));

  // Renaming writes the row; an empty name is undone.
  item("api")->setText(0, QStringLiteral("  Public API "));
  settle();
  EXPECT_EQ(storedRepository(id)->name, QStringLiteral("Public API"));
  // The recent list follows, since it shows the same row.
  EXPECT_TRUE(item("Public API", Kind::recentRepository));

  item("Work", Kind::category)->setText(0, QStringLiteral("Clients"));
  settle();
  EXPECT_EQ(reopen()->getCategories().front().name, QStringLiteral("Clients"));

  item("Public API")->setText(0, QStringLiteral("   "));
  settle();
  EXPECT_EQ(storedRepository(id)->name, QStringLiteral("Public API"));
  EXPECT_TRUE(item("Public API"));
}

TEST_F(ManagerTest, SelectingARepositoryShowsItsDetailsAndReadMe) {
  const int64_t id = add("documented");
  settings->setRepositoryColorTag(id, 1);
  QFile readme(folder("documented") + QStringLiteral("/README.md"));
  ASSERT_TRUE(readme.open(QIODevice::WriteOnly));
  readme.write("# Documented\n\nHow to build it.\n");
  readme.close();
  add("bare");
  show();

  QSignalSpy shown(controller.get(), &RepositoryManagerController::readmeShown);
  tree().setCurrentItem(item("documented"));
  ASSERT_TRUE(shown.wait(5000));
  auto* browser = controller->findChild<QTextBrowser*>(QStringLiteral("readme"));
  ASSERT_TRUE(browser);
  EXPECT_TRUE(browser->isVisible());
  EXPECT_TRUE(browser->toPlainText().contains(QStringLiteral("How to build it.")));
  QStringList labels;
  for (QLabel* label : controller->findChildren<QLabel*>())
    if (label->isVisible()) labels << label->text();
  EXPECT_TRUE(labels.contains(QStringLiteral("documented")));
  EXPECT_TRUE(labels.filter(QStringLiteral("Tag: Orange")).size() == 1) << labels.join(" | ").toStdString();

  // A repository without one shows none, also after the other's was loaded.
  tree().setCurrentItem(item("bare"));
  QTest::qWait(200);
  EXPECT_FALSE(browser->isVisible());
}

TEST_F(ManagerTest, TheMenuKeyOffersTheCurrentEntrysActionsAndANewCategoryGoesInsideTheSelectedOne) {
  const int64_t work = settings->createCategory("Work", std::nullopt);
  const int64_t id = add("api");
  show();
  tree().setCurrentItem(item("api"));
  const QStringList titles = menuOfCurrent("Colour Tag", "Green");
  EXPECT_TRUE(titles.contains("Open") && titles.contains("Remove from List…")) << titles.join(" | ").toStdString();
  EXPECT_EQ(storedRepository(id)->colorTag, std::optional<int>(3));
  EXPECT_EQ(item("api")->data(0, RepositoryManagerTreeWidget::ColorTagRole), 3);
  tree().setCurrentItem(item("api"));
  menuOfCurrent("Colour Tag", "None");
  EXPECT_EQ(storedRepository(id)->colorTag, std::nullopt);

  tree().setCurrentItem(item("api"));
  menuOfCurrent("Move To", "Work");
  EXPECT_EQ(storedRepository(id)->categoryId, std::optional<int64_t>(work));

  tree().setCurrentItem(item("Work", Kind::category));
  EXPECT_TRUE(menuOfCurrent().contains("Delete Category…"));

  // A right click below the rows is not about the selected repository.
  tree().setCurrentItem(item("api"));
  const QPoint below(10, tree().viewport()->height() - 5);
  ASSERT_EQ(tree().itemAt(below), nullptr);
  const QStringList empty = contextMenu(below);
  EXPECT_FALSE(empty.contains("Open")) << empty.join(" | ").toStdString();
  EXPECT_FALSE(empty.contains("Remove from List…"));

  // A new category goes inside the selected one...
  tree().setCurrentItem(item("Work", Kind::category));
  controller->createCategory();
  settle();
  settle();
  const auto categories = reopen()->getCategories();
  ASSERT_EQ(categories.size(), 2u);
  EXPECT_EQ(categories.back().parentId, std::optional<int64_t>(work));
  QTreeWidgetItem* created = item("New Category", Kind::category);
  ASSERT_TRUE(created);
  EXPECT_EQ(created->parent()->text(0), QStringLiteral("Work"));
  EXPECT_EQ(tree().currentItem(), created);
  // ...with its name open for typing.
  QLineEdit* editor = tree().viewport()->findChild<QLineEdit*>();
  ASSERT_TRUE(editor);
  EXPECT_EQ(editor->text(), QStringLiteral("New Category"));
}
