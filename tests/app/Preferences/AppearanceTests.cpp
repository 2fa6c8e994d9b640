#include <gtest/gtest.h>

#include <QApplication>
#include <QTextBlock>
#include <QTextDocument>
#include <QToolButton>
#include <QVBoxLayout>
#include <cmath>

#include "Controllers/RevisionDetails/RevisionHeaderView.h"
#include "Controllers/Sidebar/RepositorySidebar.h"
#include "Controls/ChangedFilesView.h"
#include "Controls/Diff/DiffColors.h"
#include "Controls/Diff/DiffTextView.h"
#include "UI/Appearance.h"

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

}  // namespace

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
  for (QWidget* view : std::initializer_list<QWidget*>{&header, &sidebar, &diff}) layout->addWidget(view);
  window.show();
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
  }
  Appearance::apply(app, 0);
}

// A checked tool button (Side by Side) looks unlike an unchecked one in both appearances:
// most of its face changes colour, not a shade of it.
TEST(Appearance, ACheckedToolButtonStandsOut) {
  for (const int appearance : {1, 2}) {
    Appearance::apply(*qApp, appearance);
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
