#include "platform/headless/headless_services.h"

namespace platform::headless {

ErrorWindow::Choice HeadlessErrorWindow::showError(const QString &errorText)
{
    ++failures;
    m_out << "FAILURE " << QString(errorText).replace(QLatin1String("\r\n"), QLatin1String(" | ")) << Qt::endl;
    return Choice::Continue;
}

HeadlessServices::HeadlessServices(QTextStream &diag)
    : keys(diag), errors(diag), mouse(diag), prompts(diag)
{
    Services set;
    set.messages = &messages;
    set.errors = &errors;
    set.keys = &keys;
    set.textWindow = &textWindow;
    set.clipboard = &clipboard;
    set.web = &web;
    set.mouse = &mouse;
    set.windows = &windows;
    set.prompts = &prompts;
    set.desktop = &desktop;
    set.spell = &spell;
    m_previous = install(set);
}

HeadlessServices::~HeadlessServices() { install(m_previous); }

} // namespace platform::headless
