#include <gtest/gtest.h>

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFontComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QPainter>
#include <QPlainTextEdit>
#include <QSignalSpy>
#include <QSpinBox>
#include <QStyle>
#include <QStyleOptionButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBlock>
#include <QTextDocument>
#include <QToolButton>
#include <QVBoxLayout>
#include <cmath>

#include "Controllers/Preferences/PreferencesWindowController.h"
#include "Controllers/RevisionDetails/RevisionHeaderView.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Controls/ChangedFilesView.h"
#include "Controls/Diff/DiffColors.h"
#include "Controls/Diff/DiffTextView.h"
#include "Controls/FileDiffView/ConflictDiffView.h"
#include "Services/MergeTool.h"
#include "Services/Preferences.h"
#include "Services/PreferencesNotifier.h"
#include "Services/RepositoryRescanner.h"
#include "Services/UrlSchemeHandlerRegistry.h"
#include "UI/Appearance.h"
#include "app/Shell/ShellFixture.h"
#include "support/TempRepository.h"

inline void PrintTo(const QString& text, std::ostream* out) { *out << '"' << text.toStdString() << '"'; }

namespace {
double luminance(const QColor& color) {
  const auto channel = [](double value) { return value <= 0.03928 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4); };
  return 0.2126 * channel(color.redF()) + 0.7152 * channel(color.greenF()) + 0.0722 * channel(color.blueF());
}

// The contrast ratio of the web's accessibility guidelines: 1 (none) to 21.
double contrast(const QColor& a, const QColor& b) {
  const double la = luminance(a), lb = luminance(b);
  return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

QColor foregroundOf(const QTextDocument& document, const std::function<bool(const QTextFragment&)>& match) {
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    for (auto it = block.begin(); !it.atEnd(); ++it) {
      if (match(it.fragment())) return it.fragment().charFormat().foreground().color();
    }
  }
  return {};
}

using Notification = PreferencesNotifier::Notification;

// Every notification posted while it lives.
struct NotificationLog {
  NotificationLog() : spy(&PreferencesNotifier::shared(), &PreferencesNotifier::notified) {}
  QList<Notification> all() const {
    QList<Notification> list;
    for (const auto& arguments : spy) list << arguments.at(0).value<Notification>();
    return list;
  }
  QSignalSpy spy;
};

}  // namespace

// The window on a preferences file and a registry of the test's own.
class PreferencesWindowTest : public ShellTest {
 protected:
  void SetUp() override {
    ShellTest::SetUp();
    window = std::make_unique<PreferencesWindowController>(registry());
  }
  void TearDown() override {
    window.reset();
    if (auto* app = qobject_cast<QApplication*>(QCoreApplication::instance())) Appearance::apply(*app, 0);
    ShellTest::TearDown();
  }
  template <typename T>
  T* control(const QString& key) const {
    T* found = window->findChild<T*>(key);
    EXPECT_TRUE(found) << key.toStdString();
    return found;
  }

  std::unique_ptr<PreferencesWindowController> window;
};

TEST_F(PreferencesWindowTest, ControlsWriteTheirKeysWithTheirNotification) {
  EXPECT_TRUE(control<QCheckBox>("disableAutomaticStatusUpdate")->isChecked());  // shown as "update automatically"

  struct Row {
    const char* key;
    std::function<void()> change;
    QVariant stored;
    Notification notification;
  };
  const std::vector<Row> rows{
      {"useTopologicalCommitOrder", [&] { control<QComboBox>("useTopologicalCommitOrder")->setCurrentIndex(1); }, false,
       Notification::revisionOrderingChanged},
      {"maxCommitCount", [&] { control<QSpinBox>("maxCommitCount")->setValue(120000); }, 120000, Notification::revisionOrderingChanged},
      {"contextSize", [&] { control<QSpinBox>("contextSize")->setValue(8); }, 8, Notification::diffContextSizeChanged},
      {"diffShowEntireFile", [&] { control<QCheckBox>("diffShowEntireFile")->setChecked(true); }, true,
       Notification::diffContextSizeChanged},
      {"diffIgnoreWhitespaces", [&] { control<QCheckBox>("diffIgnoreWhitespaces")->setChecked(true); }, true,
       Notification::diffIgnoreWhitespacesChanged},
      {"diffWordWrapKey", [&] { control<QCheckBox>("diffWordWrapKey")->setChecked(true); }, true,
       Notification::diffTextViewWordWrapChanged},
      {"diffShowHiddenSymbols", [&] { control<QCheckBox>("diffShowHiddenSymbols")->setChecked(true); }, true,
       Notification::diffShowHiddenSymbolsChanged},
      {"disableAutomaticStatusUpdate", [&] { control<QCheckBox>("disableAutomaticStatusUpdate")->setChecked(false); }, true,
       Notification::updateRepoStatusAutomaticallyChanged},
      {"automaticStatusUpdateInterval", [&] { control<QSpinBox>("automaticStatusUpdateInterval")->setValue(300); }, 300,
       Notification::updateRepoStatusAutomaticallyChanged},
  };
  for (const Row& row : rows) {
    NotificationLog log;
    row.change();
    EXPECT_EQ(Preferences::shared().value(QString::fromLatin1(row.key)), row.stored) << row.key;
    EXPECT_EQ(log.all(), QList<Notification>{row.notification}) << row.key;
  }
  // The interval follows the switch it belongs to.
  EXPECT_FALSE(control<QSpinBox>("automaticStatusUpdateInterval")->isEnabled());
  EXPECT_FALSE(control<QSpinBox>("contextSize")->isEnabled());
}

TEST_F(PreferencesWindowTest, ReloadShowsWhatAnotherWindowWroteWithoutPostingAnything) {
  Preferences::shared().setValue(QStringLiteral("contextSize"), 12);
  Preferences::shared().setValue(QStringLiteral("useTopologicalCommitOrder"), false);
  Preferences::shared().setValue(QStringLiteral("diffIgnoreWhitespaces"), true);
  NotificationLog log;
  window->reload();
  EXPECT_EQ(control<QSpinBox>("contextSize")->value(), 12);
  EXPECT_EQ(control<QComboBox>("useTopologicalCommitOrder")->currentIndex(), 1);
  EXPECT_TRUE(control<QCheckBox>("diffIgnoreWhitespaces")->isChecked());
  EXPECT_TRUE(log.all().isEmpty());
  EXPECT_EQ(Preferences::shared().integer(QStringLiteral("contextSize")), 12);
}

TEST_F(PreferencesWindowTest, AppearanceAppliesAtOnceAndTheFontIsStoredByNameAndSize) {
  auto* app = qobject_cast<QApplication*>(QCoreApplication::instance());
  ASSERT_TRUE(app);
  control<QComboBox>("appearance")->setCurrentIndex(2);
  EXPECT_EQ(Preferences::shared().integer(QStringLiteral("appearance")), 2);
  EXPECT_TRUE(Appearance::isDark(*app));
  control<QComboBox>("appearance")->setCurrentIndex(1);
  EXPECT_FALSE(Appearance::isDark(*app));

  NotificationLog log;
  auto* size = control<QSpinBox>("diffFontSize");
  size->setValue(size->value() == 17 ? 18 : 17);
  EXPECT_EQ(Preferences::shared().diffFontSize(), std::optional<double>(size->value()));
  EXPECT_EQ(Preferences::shared().diffFontName(), control<QFontComboBox>("diffFontName")->currentFont().family());
  EXPECT_EQ(log.all(), QList<Notification>{Notification::diffTextViewFontChanged});
}

TEST_F(PreferencesWindowTest, GitInstancesAreListedWithTheirVersionsAndTheChoiceIsStored) {
  // A custom "git" that is not git at all must be left out of the list.
  TempRepository bin(false, QStringLiteral("bin"));
  bin.writeExecutable("not-git", "#!/bin/sh\necho hello\n");
  const QString fake = bin.path() + QStringLiteral("/not-git");
  Preferences::shared().setGitInstance(GitInstanceType::custom(fake));

  QSignalSpy loaded(window.get(), &PreferencesWindowController::gitInstancesLoaded);
  window->reload();
  ASSERT_TRUE(loaded.wait(20000));
  auto* combo = control<QComboBox>("gitInstanceType");

  const QString systemVersion = QString::fromUtf8(runProgram(QStringLiteral("/usr/bin/git"), {QStringLiteral("version")}))
                                    .section(QStringLiteral("version"), 1)
                                    .trimmed();
  QStringList titles;
  for (int i = 0; i < combo->count(); ++i) titles << combo->itemText(i);
  EXPECT_TRUE(titles.contains(QStringLiteral("system — %1 (/usr/bin/git)").arg(systemVersion))) << titles.join(" | ").toStdString();
  EXPECT_EQ(titles.last(), QStringLiteral("Other…"));
  for (const QString& title : titles) EXPECT_FALSE(title.contains(fake)) << title.toStdString();
  // The stored choice answers nothing, so no entry is selected and the window says so.
  EXPECT_EQ(combo->currentIndex(), -1);

  const int systemIndex = int(titles.indexOf(QStringLiteral("system — %1 (/usr/bin/git)").arg(systemVersion)));
  combo->setCurrentIndex(systemIndex);
  Q_EMIT combo->activated(systemIndex);
  EXPECT_EQ(Preferences::shared().gitInstance(), GitInstanceType::system());
  EXPECT_EQ(Preferences::shared().integer(QStringLiteral("gitInstanceType")), 0);

  // A git of the user's own joins the list, chosen.
  const QString own = bin.path() + QStringLiteral("/my-git");
  ASSERT_TRUE(QFile::link(QStringLiteral("/usr/bin/git"), own));
  window->useCustomGitInstance(own);
  ASSERT_TRUE(loaded.wait(20000));
  EXPECT_EQ(Preferences::shared().string(QStringLiteral("customGitInstancePath")), own);
  EXPECT_EQ(Preferences::shared().integer(QStringLiteral("gitInstanceType")), 2);
  EXPECT_EQ(combo->currentText(), QStringLiteral("%1 (%2)").arg(systemVersion, own));
}

TEST_F(PreferencesWindowTest, TheSourceFolderIsStoredAndItsRescanFillsTheRegistry) {
  QTemporaryDir source;
  runProgram(QStringLiteral("git"), {QStringLiteral("init"), QStringLiteral("-q"), source.path() + QStringLiteral("/clients/web")});
  runProgram(QStringLiteral("git"), {QStringLiteral("init"), QStringLiteral("-q"), source.path() + QStringLiteral("/tools")});

  auto* rescan = window->findChild<QPushButton*>(QStringLiteral("rescan"));
  ASSERT_TRUE(rescan);
  EXPECT_FALSE(rescan->isEnabled());  // nothing to rescan yet
  window->setSourceFolder(source.path() + QStringLiteral("/"));
  EXPECT_EQ(Preferences::shared().defaultSourceFolder(), std::optional<QString>(QDir::cleanPath(source.path())));
  ASSERT_TRUE(rescan->isEnabled());

  QSignalSpy finished(&RepositoryRescanner::shared(), &RepositoryRescanner::finished);
  QSignalSpy progress(&RepositoryRescanner::shared(), &RepositoryRescanner::progressChanged);
  QSignalSpy dataUpdated(&PreferencesNotifier::shared(), &PreferencesNotifier::repositoryManagerDataUpdated);
  rescan->click();
  EXPECT_FALSE(rescan->isEnabled());
  ASSERT_TRUE(finished.wait(20000));
  EXPECT_EQ(finished.at(0).at(0).toInt(), 2);
  EXPECT_EQ(dataUpdated.count(), 1);
  ASSERT_FALSE(progress.isEmpty());
  EXPECT_EQ(progress.last().at(0).toInt(), 2);  // both checked, out of two
  EXPECT_EQ(progress.last().at(1).toInt(), 2);
  EXPECT_TRUE(rescan->isEnabled());
  EXPECT_EQ(registry().getRepositories().size(), 2u);
}

// Keeping the other entries of the file is the handler registry's business, tested with it.
TEST_F(PreferencesWindowTest, IntegrationMakesJelvTheHandlerOfOneScheme) {
  const QString path = UrlSchemeHandlerRegistry::mimeAppsPath();
  window->reload();
  auto* button = control<QPushButton>(QStringLiteral("github-macDefaultButton"));
  ASSERT_TRUE(button->isEnabled());
  button->click();
  EXPECT_FALSE(button->isEnabled());
  EXPECT_TRUE(UrlSchemeHandlerRegistry::isDefaultHandler(QStringLiteral("github-mac")));
  EXPECT_FALSE(UrlSchemeHandlerRegistry::isDefaultHandler(QStringLiteral("sourcetree")));
  EXPECT_TRUE(control<QPushButton>(QStringLiteral("sourcetreeDefaultButton"))->isEnabled());
  QFile::remove(path);
}

// The diff tool choice lists the tools found on PATH (and a stored one that has gone,
// marked), then Custom; the stored value is the tool, not the row. The custom program
// and its arguments are editable only for Custom.
TEST_F(PreferencesWindowTest, ExternalDiffToolOffersInstalledToolsAndACustomProgram) {
  TempRepository bin(false, QStringLiteral("bin"));
  for (const char* name : {"kdiff3", "code"}) bin.writeExecutable(QString::fromLatin1(name), "#!/bin/sh\n");
  struct PathGuard {
    QByteArray old = qgetenv("PATH");
    ~PathGuard() { qputenv("PATH", old); }
  } guard;
  qputenv("PATH", bin.path().toLocal8Bit() + ':' + guard.old);
  Preferences::shared().setExternalDiffTool(int(MergeTool::Kind::meld));
  window->reload();

  auto* combo = control<QComboBox>("externalDiffTool");
  auto* program = control<QLineEdit>("externalDiffToolCustomPath");
  auto* arguments = control<QLineEdit>("externalDiffToolCustomArguments");
  QStringList items;
  for (int i = 0; i < combo->count(); ++i) items << combo->itemText(i);
  // Whatever else this machine has installed comes before; ours are there in order.
  ASSERT_GE(items.size(), 4);
  EXPECT_EQ(items.mid(items.size() - 4), (QStringList{"KDiff3", "Visual Studio Code", "Meld (not found)", "Custom"}));
  EXPECT_EQ(combo->currentText(), QStringLiteral("Meld (not found)"));
  EXPECT_FALSE(program->isEnabled());

  combo->setCurrentIndex(combo->count() - 1);
  Q_EMIT combo->activated(combo->count() - 1);
  EXPECT_EQ(Preferences::shared().externalDiffTool(), int(MergeTool::Kind::custom));
  ASSERT_TRUE(program->isEnabled());
  EXPECT_TRUE(arguments->isEnabled());
  QTest::keyClicks(program, QStringLiteral("/opt/diff tool"));
  QTest::keyClicks(arguments, QStringLiteral("$REMOTE $LOCAL"));
  EXPECT_EQ(Preferences::shared().string(QStringLiteral("externalDiffToolCustomPath")), QStringLiteral("/opt/diff tool"));
  EXPECT_EQ(Preferences::shared().string(QStringLiteral("externalDiffToolCustomArguments")), QStringLiteral("$REMOTE $LOCAL"));
  bool hint = false;
  for (QLabel* label : window->findChildren<QLabel*>()) hint = hint || label->text() == QStringLiteral("Available variables: $LOCAL, $REMOTE");
  EXPECT_TRUE(hint);

  const int kdiff3 = combo->findText(QStringLiteral("KDiff3"));
  combo->setCurrentIndex(kdiff3);
  Q_EMIT combo->activated(kdiff3);
  EXPECT_EQ(Preferences::shared().externalDiffTool(), int(MergeTool::Kind::kdiff3));
  EXPECT_FALSE(program->isEnabled());
  EXPECT_EQ(program->text(), QStringLiteral("/opt/diff tool"));  // kept for a later switch back
}

// Every pairing of text and background the windows draw, in both appearances: body text
// at 4.5:1 at least, the bold status letters (a symbol more than text) at 3:1.
TEST(Appearance, TextIsReadableOnItsBackgroundInBothAppearances) {
  for (const bool dark : {false, true}) {
    const QPalette p = Appearance::palette(dark);
    const QColor base = p.color(QPalette::Base), window = p.color(QPalette::Window);
    struct Pair {
      const char* name;
      QColor text;
      QColor background;
      double minimum;
    };
    std::vector<Pair> pairs = {
        {"text on base", p.color(QPalette::Text), base, 4.5},
        {"window text", p.color(QPalette::WindowText), window, 4.5},
        {"button text", p.color(QPalette::ButtonText), p.color(QPalette::Button), 4.5},
        {"selected text", p.color(QPalette::HighlightedText), p.color(QPalette::Highlight), 4.5},
        {"tool tip", p.color(QPalette::ToolTipText), p.color(QPalette::ToolTipBase), 4.5},
        {"quiet text on base (counts, diff numbers)", p.color(QPalette::PlaceholderText), base, 4.5},
        {"quiet text on window (labels, hints)", p.color(QPalette::PlaceholderText), window, 4.5},
        {"quiet text on the gutter", p.color(QPalette::PlaceholderText), p.color(QPalette::AlternateBase), 4.5},
        {"link on base (Parents)", p.color(QPalette::Link), base, 4.5},
        {"link on window", p.color(QPalette::Link), window, 4.5},
        {"error on base", Appearance::errorText(p), base, 4.5},
        {"error on window", Appearance::errorText(p), window, 4.5},
        {"warning on window", Appearance::warningText(p), window, 4.5},
        {"checked tool button", p.color(QPalette::ButtonText), Appearance::checkedButtonFill(p), 4.5},
        {"disabled text", p.color(QPalette::Disabled, QPalette::Text), base, 3.0},
        {"disabled button", p.color(QPalette::Disabled, QPalette::ButtonText), p.color(QPalette::Button), 3.0},
    };
    for (const DiffRowStyle style : {DiffRowStyle::added, DiffRowStyle::removed, DiffRowStyle::header}) {
      const DiffRowColors row = diffRowColors(style, dark);
      pairs.push_back({"text on a diff row", p.color(QPalette::Text), row.background, 4.5});
      pairs.push_back({"line number on a diff row's gutter", p.color(QPalette::Text), row.gutter, 4.5});
      if (diffWordColor(style, dark).isValid()) pairs.push_back({"text on a changed word", p.color(QPalette::Text), diffWordColor(style, dark), 4.5});
    }
    for (const ChangeType type : {ChangeType::added, ChangeType::deleted, ChangeType::modified, ChangeType::renamed, ChangeType::copied,
                                  ChangeType::unmerged}) {
      pairs.push_back({"status letter", ChangedFilesView::statusColor(type, false, dark), base, 3.0});
    }
    pairs.push_back({"status letter of a new file", ChangedFilesView::statusColor(ChangeType::added, true, dark), base, 3.0});

    for (const Pair& pair : pairs) {
      EXPECT_GE(contrast(pair.text, pair.background), pair.minimum)
          << (dark ? "dark: " : "light: ") << pair.name << " " << pair.text.name().toStdString() << " on "
          << pair.background.name().toStdString();
    }
  }
}

// Switching the appearance while a window is open: views that colour what they show when
// they fill it take the new palette's colours, as if filled anew.
TEST(Appearance, OpenViewsTakeTheColoursOfANewAppearance) {
  QApplication& app = *qApp;
  Appearance::apply(app, 1);
  RevisionDetails details;
  details.sha = QStringLiteral("1a3e64c6c4a623626ff0687008732a8e007e2a1c");
  details.parents = {QStringLiteral("3f664917c20733253934d3c4ff8330a7a60f27b7")};
  details.author = details.committer = QStringLiteral("Ada");
  details.authorDate = details.committerDate = QDateTime::fromSecsSinceEpoch(1700000000, Qt::UTC);
  details.message = QStringLiteral("Subject\n");
  // A shown window: a palette change reaches the widgets of windows that have one.
  QWidget window;
  auto* layout = new QVBoxLayout(&window);
  auto& header = *new RevisionHeaderView(&window);
  header.setDetails(details);
  auto& sidebar = *new RepositorySidebar(&window);
  RepositorySidebar::Content content;
  content.localChangesCount = 3;
  content.submodules = {QStringLiteral("sha1collisiondetection")};
  sidebar.setContent(content);
  auto& diff = *new DiffTextView(&window);
  auto& conflict = *new ConflictDiffView(&window);
  for (QWidget* view : std::initializer_list<QWidget*>{&header, &sidebar, &diff, &conflict}) layout->addWidget(view);
  window.show();
  conflict.showDiff(QStringLiteral("a.txt"), QStringLiteral("diff --cc a.txt\n@@@ -1,1 -1,1 +1,5 @@@\n++<<<<<<< HEAD\n +mine\n++=======\n+ theirs\n++>>>>>>> theirs\n"));
  diff.setRows({{UnifiedDiffRow::Kind::hunkHeader, 0, 0, QStringLiteral("@@ -1 +1 @@")},
                {UnifiedDiffRow::Kind::added, 0, 1, QStringLiteral("new")}});

  for (const int appearance : {2, 1}) {
    Appearance::apply(app, appearance);
    QCoreApplication::processEvents();
    const bool dark = appearance == 2;
    const QPalette p = Appearance::palette(dark);
    SCOPED_TRACE(dark ? "dark" : "light");

    const auto isLink = [](const QTextFragment& fragment) { return fragment.charFormat().isAnchor(); };
    EXPECT_EQ(foregroundOf(*header.document(), isLink), p.color(QPalette::Link));
    const auto isLabel = [](const QTextFragment& fragment) { return fragment.text() == QStringLiteral("Parents"); };
    EXPECT_EQ(foregroundOf(*header.document(), isLabel), p.color(QPalette::PlaceholderText));

    QTreeWidgetItem* submodules = nullptr;
    for (int i = 0; i < sidebar.topLevelItemCount(); ++i) {
      if (sidebar.topLevelItem(i)->text(0) == QStringLiteral("Submodules")) submodules = sidebar.topLevelItem(i);
    }
    ASSERT_TRUE(submodules);
    EXPECT_EQ(submodules->text(1), QStringLiteral("1"));
    EXPECT_EQ(submodules->foreground(1).color(), p.color(QPalette::PlaceholderText));

    const QList<QTextEdit::ExtraSelection> rows = diff.extraSelections();
    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[1].format.background().color(), diffRowColors(DiffRowStyle::added, dark).background);

    const QList<QTextEdit::ExtraSelection> conflictRows = conflict.findChild<QPlainTextEdit*>()->extraSelections();
    ASSERT_EQ(conflictRows.size(), 5);
    for (const QTextEdit::ExtraSelection& row : conflictRows) EXPECT_EQ(row.format.background().color().lightness() < 128, dark);
  }
  Appearance::apply(app, 0);
}

// In both appearances a checked tool button (Side by Side) looks unlike an unchecked one:
// most of its face changes colour, not a shade of it. An unchecked check box or radio
// button can be seen on a list's base (a sheet's list of branches) and on a window.
TEST(Appearance, CheckedButtonsAndUncheckedBoxesStandOut) {
  for (const int appearance : {1, 2}) {
    Appearance::apply(*qApp, appearance);
    const QPalette p = qApp->palette();
    for (const auto& [element, role] : {std::pair{QStyle::PE_IndicatorItemViewItemCheck, QPalette::Base},
                                        std::pair{QStyle::PE_IndicatorCheckBox, QPalette::Window},
                                        std::pair{QStyle::PE_IndicatorRadioButton, QPalette::Window}}) {
      QImage image(24, 24, QImage::Format_RGB32);
      image.fill(p.color(role));
      QStyleOptionButton option;
      option.palette = p;
      option.rect = QRect(4, 4, 16, 16);
      option.state = QStyle::State_Enabled | QStyle::State_Off;
      QPainter painter(&image);
      qApp->style()->drawPrimitive(element, &option, &painter);
      painter.end();
      double strongest = 1;
      for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) strongest = std::max(strongest, contrast(image.pixelColor(x, y), p.color(role)));
      }
      EXPECT_GE(strongest, 3.0) << "appearance " << appearance << ", element " << element;
    }

    QToolButton button;
    button.setText(QStringLiteral("Side by Side"));
    button.setCheckable(true);
    button.show();
    const QImage off = button.grab().toImage();
    button.setChecked(true);
    const QImage on = button.grab().toImage();
    ASSERT_EQ(off.size(), on.size());
    int changed = 0;
    for (int y = 0; y < off.height(); ++y) {
      for (int x = 0; x < off.width(); ++x) {
        const QColor a = off.pixelColor(x, y), b = on.pixelColor(x, y);
        changed += std::abs(a.red() - b.red()) + std::abs(a.green() - b.green()) + std::abs(a.blue() - b.blue()) > 60;
      }
    }
    EXPECT_GT(changed, off.width() * off.height() / 2) << "appearance " << appearance;
  }
  Appearance::apply(*qApp, 0);
}
