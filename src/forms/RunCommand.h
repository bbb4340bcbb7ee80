#pragma once

#include "base/KelError.h"
#include "forms/Dialogs.h"
#include "qt/CommandError.h"
#include "qt/QtText.h"

#include <QAbstractButton>
#include <QString>

namespace zem {

/// Runs a command of the author. What goes wrong in it ends the command with a message and not the program.
template <class Command>
void RunCommand(Dialogs& dialogs, QWidget* parent, Command command) {
    const auto show = [&](const QString& text, const QString& title) {
        dialogs.ShowMessageBox(parent, text, title, QMessageBox::Ok, QMessageBox::Warning);
    };
    try {
        command();
    } catch (const CommandError& error) {
        show(error.Text(), error.Title());
    } catch (const KelError& error) {
        show(QStringLiteral("The command was not carried out: %1.").arg(ToQt(error.what())),
             QLatin1String(DefaultTitle));
    } catch (const std::exception& error) {
        show(QStringLiteral("Something went wrong, and the command was given up: %1")
                 .arg(QLatin1String(error.what())),
             QLatin1String(DefaultTitle));
    }
}

/// Runs the handler as a command whenever the button of the form is clicked.
template <class Handler>
void OnClick(QAbstractButton* button, QWidget* form, Dialogs& dialogs, Handler handler) {
    QObject::connect(button, &QAbstractButton::clicked, form,
                     [form, &dialogs, handler] { RunCommand(dialogs, form, handler); });
}

} // namespace zem
