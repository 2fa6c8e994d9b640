#include "Controllers/QuickLaunch/QuickLaunchWindowController.h"

#include <QApplication>
#include <algorithm>
#include <QFrame>
#include <QGraphicsDropShadowEffect>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPainter>
#include <QVBoxLayout>

#include "Commands/QuickLaunchSession.h"
#include "Controllers/QuickLaunch/QuickLaunchItemDelegate.h"
#include "Controllers/QuickLaunch/QuickLaunchListModel.h"
#include "UI/JelvMainWindow.h"

namespace {
constexpr int panelWidth = 620;
constexpr int panelTop = 56;
constexpr int panelMaxHeight = 480;
}  // namespace

QuickLaunchWindowController* QuickLaunchWindowController::showOver(JelvMainWindow* window) {
  auto* panel = window->findChild<QuickLaunchWindowController*>(QString(), Qt::FindDirectChildrenOnly);
  if (!panel) panel = new QuickLaunchWindowController(window);
  panel->show();
  panel->raise();
  panel->text_->setFocus(Qt::PopupFocusReason);
  return panel;
}

QuickLaunchWindowController::QuickLaunchWindowController(JelvMainWindow* window)
    : QWidget(window),
      session_(new QuickLaunchSession(window, window->documents(), this)),
      box_(new QFrame(this)),
      text_(new QLineEdit(box_)),
      status_(new QLabel(box_)),
      list_(new QListView(box_)),
      model_(new QuickLaunchListModel(this)) {
  setObjectName(QStringLiteral("quickLaunch"));
  setAttribute(Qt::WA_DeleteOnClose);
  box_->setObjectName(QStringLiteral("quickLaunchPanel"));
  box_->setFrameShape(QFrame::StyledPanel);
  box_->setAutoFillBackground(true);
  auto* shadow = new QGraphicsDropShadowEffect(box_);
  shadow->setBlurRadius(24);
  shadow->setOffset(0, 4);
  shadow->setColor(QColor(0, 0, 0, 90));
  box_->setGraphicsEffect(shadow);

  auto* layout = new QVBoxLayout(box_);
  layout->setContentsMargins(8, 8, 8, 8);
  layout->setSpacing(6);
  QFont big = text_->font();
  big.setPointSizeF(big.pointSizeF() * 1.25);
  text_->setFont(big);
  text_->setClearButtonEnabled(true);
  layout->addWidget(text_);
  status_->setAlignment(Qt::AlignCenter);
  status_->setWordWrap(true);
  status_->setForegroundRole(QPalette::PlaceholderText);
  layout->addWidget(status_);
  list_->setModel(model_);
  list_->setItemDelegate(new QuickLaunchItemDelegate(list_));
  list_->setFocusPolicy(Qt::NoFocus);  // the text field keeps the keys
  list_->setUniformItemSizes(false);
  list_->setFrameShape(QFrame::NoFrame);
  list_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  list_->setSelectionMode(QAbstractItemView::SingleSelection);
  layout->addWidget(list_, 1);

  refreshCommandListAction_.setSingleShot(true);
  refreshCommandListAction_.setInterval(refreshDelayMs);
  connect(&refreshCommandListAction_, &QTimer::timeout, this, &QuickLaunchWindowController::refreshCommandList);
  connect(text_, &QLineEdit::textChanged, this, [this] { refreshCommandListAction_.start(); });
  connect(list_, &QListView::clicked, this, [this](const QModelIndex& index) {
    if (!model_->isSelectable(index.row())) return;
    list_->setCurrentIndex(index);
    takeSelectedRow();
  });
  connect(session_, &QuickLaunchSession::providerChanged, this, &QuickLaunchWindowController::showProvider);
  text_->installEventFilter(this);
  window->installEventFilter(this);
  // Losing the keys closes the panel: another widget or another window took them.
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, QWidget* now) {
    if (!taking_ && isVisible() && (!now || !isAncestorOf(now))) closePanel();
  });
  layOut();
  showProvider();
}

void QuickLaunchWindowController::layOut() {
  setGeometry(parentWidget()->rect());
  const int width = std::min(panelWidth, this->width() - 40);
  // As tall as the rows, up to most of the window.
  int rows = 0;
  for (int row = 0; row < model_->rowCount() && rows < panelMaxHeight; ++row) rows += list_->sizeHintForRow(row);
  const int chrome = box_->layout()->contentsMargins().top() * 2 + text_->sizeHint().height() + box_->layout()->spacing() +
                     (!status_->isHidden() ? status_->sizeHint().height() + box_->layout()->spacing() : 0) + 4;
  const int height = std::min(chrome + rows, std::max(chrome, std::min(panelMaxHeight, this->height() - panelTop - 40)));
  box_->setGeometry((this->width() - width) / 2, panelTop, width, height);
}

void QuickLaunchWindowController::showProvider() {
  text_->clear();
  text_->setPlaceholderText(session_->placeholder());
  refreshCommandList();
}

void QuickLaunchWindowController::refreshCommandList() {
  refreshCommandListAction_.stop();
  CommandProvider* provider = session_->provider();
  if (provider) provider->refresh(text_->text());
  model_->setItems(provider ? provider->items() : std::vector<CommandProviderItem>{});
  if (session_->isLoading()) {
    status_->setText(tr("Reading the files…"));
  } else if (!session_->problem().isEmpty()) {
    status_->setText(session_->problem());
  } else {
    status_->setText(model_->rowCount() > 0 ? QString() : text_->text().isEmpty() ? tr("Nothing to choose from") : tr("Nothing matches"));
  }
  status_->setVisible(!status_->text().isEmpty());
  list_->setCurrentIndex({});
  moveSelection(1);
  layOut();
}

void QuickLaunchWindowController::moveSelection(int step) {
  int row = list_->currentIndex().isValid() ? list_->currentIndex().row() + step : (step > 0 ? 0 : model_->rowCount() - 1);
  while (row >= 0 && row < model_->rowCount() && !model_->isSelectable(row)) row += step;
  if (row < 0 || row >= model_->rowCount()) {
    // At the top, the header above the first row comes into view again.
    if (step < 0) list_->scrollToTop();
    return;
  }
  list_->setCurrentIndex(model_->index(row));
  if (row == 1 && step < 0) list_->scrollToTop();
}

void QuickLaunchWindowController::takeSelectedRow() {
  // Return right after typing takes the row of the text as typed.
  if (refreshCommandListAction_.isActive()) refreshCommandList();
  const CommandProviderItem* item = model_->item(list_->currentIndex().row());
  if (!item || !session_->canTake(*item)) return;
  const CommandProviderItem taken = *item;
  // Hidden while the row runs: a sheet it opens may run its own event loop.
  QPointer<QuickLaunchWindowController> self(this);
  taking_ = true;
  hide();
  const QuickLaunchSession::Outcome outcome = session_->take(taken);
  if (!self) return;
  taking_ = false;
  if (outcome == QuickLaunchSession::Outcome::nextArgument) {
    show();
    raise();
    text_->setFocus(Qt::PopupFocusReason);
    showProvider();
  } else {
    closePanel();
  }
}

void QuickLaunchWindowController::closePanel() {
  refreshCommandListAction_.stop();
  parentWidget()->removeEventFilter(this);
  close();
}

bool QuickLaunchWindowController::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parentWidget() && event->type() == QEvent::Resize) layOut();
  if (watched == text_ && event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
      case Qt::Key_Down: moveSelection(1); return true;
      case Qt::Key_Up: moveSelection(-1); return true;
      case Qt::Key_Return:
      case Qt::Key_Enter: takeSelectedRow(); return true;
      case Qt::Key_Escape: closePanel(); return true;
      default: break;
    }
  }
  return QWidget::eventFilter(watched, event);
}

void QuickLaunchWindowController::mousePressEvent(QMouseEvent* event) {
  // A click beside the panel closes it, as a menu would.
  if (!box_->geometry().contains(event->position().toPoint())) closePanel();
}

void QuickLaunchWindowController::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.fillRect(rect(), QColor(0, 0, 0, 40));
}
