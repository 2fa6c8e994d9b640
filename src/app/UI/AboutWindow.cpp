#include "UI/AboutWindow.h"

#include <QAction>
#include <QApplication>
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QPointer>
#include <QThreadPool>
#include <QTreeWidget>
#include <QVBoxLayout>

#include "Controls/WindowKeys.h"
#include "Services/AboutInformation.h"

AboutWindow::AboutWindow(QWidget* parent) : QDialog(parent) {
  setWindowTitle(tr("About Jelv"));
  auto* title = new QLabel(QStringLiteral("Jelv"), this);
  QFont big = title->font();
  big.setPointSizeF(big.pointSizeF() * 1.6);
  big.setBold(true);
  title->setFont(big);
  version_ = new QLabel(tr("Version %1").arg(AboutInformation::applicationVersion()), this);
  git_ = new QLabel(tr("Reading the git version…"), this);
  QStringList lines;
  for (const AboutInformation::Library& library : AboutInformation::libraries()) {
    lines << QStringLiteral("%1 — %2").arg(library.name, library.licence);
  }
  libraries_ = new QLabel(tr("Built on:") + QLatin1Char('\n') + lines.join(QLatin1Char('\n')), this);
  for (QLabel* label : {version_, git_, libraries_}) label->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(title);
  layout->addWidget(version_);
  layout->addWidget(git_);
  layout->addSpacing(8);
  layout->addWidget(libraries_);
  layout->addWidget(buttons);
  WindowKeys::closeOnEscapeAndCtrlW(this);

  // git runs off the main thread; the window may be closed before it answers.
  QPointer<AboutWindow> self(this);
  QThreadPool::globalInstance()->start([self] {
    const QString line = AboutInformation::gitVersionLine();
    QMetaObject::invokeMethod(qApp, [self, line] {
      if (!self) return;
      self->git_->setText(line);
      Q_EMIT self->gitVersionRead();
    });
  });
}

QString AboutWindow::text() const {
  return QStringList{version_->text(), git_->text(), libraries_->text()}.join(QLatin1Char('\n'));
}

namespace {

void addMenu(QTreeWidget* list, const QString& title, const QList<QAction*>& actions) {
  QTreeWidgetItem* section = nullptr;
  for (QAction* action : actions) {
    if (action->isSeparator()) continue;
    if (QMenu* sub = action->menu()) {
      addMenu(list, title + QStringLiteral(" ▸ ") + action->text().remove(QLatin1Char('&')), sub->actions());
      continue;
    }
    if (action->shortcuts().isEmpty()) continue;
    if (!section) {
      section = new QTreeWidgetItem(list, {title});
      section->setFirstColumnSpanned(true);
      QFont bold = section->font(0);
      bold.setBold(true);
      section->setFont(0, bold);
    }
    QStringList keys;
    for (const QKeySequence& keySequence : action->shortcuts()) {
      // Shift+Tab arrives as Backtab from some keyboards: the same keys to the user.
      const QString text = keySequence.toString(QKeySequence::NativeText).replace(QStringLiteral("Backtab"), QStringLiteral("Tab"));
      if (!keys.contains(text)) keys << text;
    }
    new QTreeWidgetItem(section, {action->text().remove(QLatin1Char('&')), keys.join(QStringLiteral(", "))});
  }
}

}  // namespace

KeyboardShortcutsWindow::KeyboardShortcutsWindow(const QMenuBar* menus, QWidget* parent) : QDialog(parent) {
  setWindowTitle(tr("Keyboard Shortcuts"));
  resize(520, 560);
  list_ = new QTreeWidget(this);
  list_->setHeaderLabels({tr("Action"), tr("Keys")});
  list_->setRootIsDecorated(false);
  list_->header()->setStretchLastSection(false);
  list_->header()->setSectionResizeMode(0, QHeaderView::Stretch);
  list_->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
  for (QAction* menuAction : menus->actions()) {
    const QString title = menuAction->text().remove(QLatin1Char('&'));
    if (!menuAction->menu()) continue;
    addMenu(list_, title, menuAction->menu()->actions());
  }
  list_->expandAll();
  WindowKeys::closeOnEscapeAndCtrlW(this);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
  connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(list_);
  layout->addWidget(buttons);
}
