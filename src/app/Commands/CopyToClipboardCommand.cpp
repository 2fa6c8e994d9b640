#include "Commands/CopyToClipboardCommand.h"

#include <QApplication>
#include <QClipboard>

#include "Commands/SheetChoices.h"

using namespace SheetChoices;

void CopyToClipboardCommand::execute(const CommandContext& context, What what) {
  QString text;
  if (what == What::referenceName) {
    if (context.reference) text = context.reference->name;
  } else {
    QStringList parts;
    for (const RevisionPtr& revision : context.revisions) parts << (what == What::sha ? revision->sha().toString() : subjectOf(revision));
    text = parts.join(QLatin1Char('\n'));
  }
  if (!text.isEmpty()) QApplication::clipboard()->setText(text);
}
