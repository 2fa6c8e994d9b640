#include "Controllers/Search/RevisionSearchBar.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

RevisionSearchBar::RevisionSearchBar(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("revisionSearchBar"));
  type_ = new QComboBox(this);
  for (RevisionSearchType type : {RevisionSearchType::message, RevisionSearchType::author, RevisionSearchType::diffContent,
                                  RevisionSearchType::diffPath}) {
    type_->addItem(typeTitle(type), static_cast<int>(type));
  }
  scope_ = new QComboBox(this);
  scope_->addItem(tr("All Branches"), static_cast<int>(RevisionSearchScope::repository));
  scope_->addItem(tr("Current Branch"), static_cast<int>(RevisionSearchScope::currentBranch));
  field_ = new QLineEdit(this);
  field_->setObjectName(QStringLiteral("revisionSearchField"));
  field_->setPlaceholderText(tr("Search commits or jump to a SHA"));
  field_->setClearButtonEnabled(true);
  field_->installEventFilter(this);
  count_ = new QLabel(this);
  count_->setMinimumWidth(90);
  count_->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
  previous_ = new QToolButton(this);
  previous_->setArrowType(Qt::UpArrow);
  previous_->setToolTip(tr("Previous match (Shift+Return)"));
  next_ = new QToolButton(this);
  next_->setArrowType(Qt::DownArrow);
  next_->setToolTip(tr("Next match (Return)"));
  results_ = new QToolButton(this);
  results_->setObjectName(QStringLiteral("searchResultsButton"));
  results_->setText(tr("List"));
  results_->setToolTip(tr("Show the matches as a list (Down goes there)"));
  results_->setCheckable(true);
  results_->setChecked(true);
  close_ = new QToolButton(this);
  close_->setText(QStringLiteral("\u2715"));
  close_->setToolTip(tr("Close the search (Escape)"));
  close_->setAutoRaise(true);

  auto* layout = new QHBoxLayout(this);
  layout->setContentsMargins(6, 4, 6, 4);
  layout->setSpacing(4);
  layout->addWidget(type_);
  layout->addWidget(scope_);
  layout->addWidget(field_, 1);
  layout->addWidget(count_);
  layout->addWidget(previous_);
  layout->addWidget(next_);
  layout->addWidget(results_);
  layout->addWidget(close_);

  const auto changed = [this] { Q_EMIT queryChanged(query()); };
  connect(field_, &QLineEdit::textChanged, this, changed);
  connect(type_, &QComboBox::currentIndexChanged, this, changed);
  connect(scope_, &QComboBox::currentIndexChanged, this, changed);
  connect(previous_, &QToolButton::clicked, this, &RevisionSearchBar::previousRequested);
  connect(next_, &QToolButton::clicked, this, &RevisionSearchBar::nextRequested);
  connect(results_, &QToolButton::toggled, this, &RevisionSearchBar::resultsToggled);
  connect(close_, &QToolButton::clicked, this, [this] {
    hide();
    Q_EMIT closed();
  });
}

QString RevisionSearchBar::typeTitle(RevisionSearchType type) {
  switch (type) {
    case RevisionSearchType::message: return tr("Message");
    case RevisionSearchType::author: return tr("Author");
    case RevisionSearchType::diffContent: return tr("Content");
    case RevisionSearchType::diffPath: return tr("Path");
  }
  return {};
}

RevisionSearchQuery RevisionSearchBar::query() const {
  RevisionSearchQuery query;
  query.type = static_cast<RevisionSearchType>(type_->currentData().toInt());
  query.scope = static_cast<RevisionSearchScope>(scope_->currentData().toInt());
  query.searchString = field_->text();
  return query;
}

void RevisionSearchBar::activate() {
  show();
  field_->setFocus(Qt::ShortcutFocusReason);
  field_->selectAll();
}

bool RevisionSearchBar::isShowingResults() const { return results_->isChecked(); }

void RevisionSearchBar::setCountText(const QString& text) { count_->setText(text); }

bool RevisionSearchBar::eventFilter(QObject* watched, QEvent* event) {
  if (watched == field_ && event->type() == QEvent::KeyPress) {
    const auto* key = static_cast<QKeyEvent*>(event);
    if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
      if (key->modifiers() & Qt::ShiftModifier) {
        Q_EMIT previousRequested();
      } else {
        Q_EMIT nextRequested();
      }
      return true;
    }
    if (key->key() == Qt::Key_Down && results_->isChecked()) {
      Q_EMIT resultsFocusRequested();
      return true;
    }
    if (key->key() == Qt::Key_Escape) {
      hide();
      Q_EMIT closed();
      return true;
    }
  }
  return QWidget::eventFilter(watched, event);
}
