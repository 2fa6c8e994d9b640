#pragma once
// Names of the notifications that Jelv and its helper programs exchange on the session
// bus. Header only: the helpers include it without linking the core library.
#include <QString>

namespace DistributedNotificationNames {

// Every notification is this one signal, `notification(name, object)`, broadcast;
// receivers filter by name.
inline QString objectPath() { return QStringLiteral("/org/jelv/Jelv"); }
inline QString interfaceName() { return QStringLiteral("org.jelv.Jelv.Notifications"); }
inline QString signalName() { return QStringLiteral("notification"); }

// The rebase editor: it posts the file that git gave it and waits for one of the two
// answers, whose object is that same path.
inline QString editTodoListForRebase() { return QStringLiteral("jelvEditTodoListForRebase"); }
inline QString continueRebase() { return QStringLiteral("jelvContinueRebase"); }
inline QString rebaseEditorFinish() { return QStringLiteral("jelv_riFinish"); }
inline QString rebaseEditorCancel() { return QStringLiteral("jelv_riCancel"); }

// The ask-pass helper: it posts a request (a JSON object) and waits for one of the three
// answers that carry its own process id.
inline QString askPasswdRequest() { return QStringLiteral("askPasswdRequest"); }
inline QString askPasswdResponseUsername() { return QStringLiteral("askPasswdResponse_Username"); }
inline QString askPasswdResponsePassword() { return QStringLiteral("askPasswdResponse_Password"); }
inline QString askPasswdResponseCancel() { return QStringLiteral("askPasswdResponse_Cancel"); }

// The command line tool: it posts its working directory and arguments; the application
// answers "handled" at once and "requestHandled" once it has acted.
inline QString jelvApiRequest() { return QStringLiteral("jelvApi_Request"); }
inline QString jelvApiResponse() { return QStringLiteral("jelvApi_Response"); }

}  // namespace DistributedNotificationNames
