#include "toolkit/desktop/driver/driven_backend.h"

#include "page/surfaces/document_surface.h"
#include "toolkit/desktop/canvas.h"
#include "toolkit/desktop/driver/widget_hands.h"
#include "toolkit/desktop/main_window.h"

#include <utility>

namespace keldrin {

DrivenBackend::DrivenBackend(Script script, std::ostream &transcript)
    : ScriptedBackend(std::move(script), transcript), desktop_({.memory = false}) {
    hands_ = std::make_unique<WidgetHands>(desktop_);
    desktop_.reportsResize = false;
}

// ---- Root window

void DrivenBackend::openRoot(const RootSpec &spec) {
    ScriptedBackend::openRoot(spec);
    desktop_.openRoot(spec);
    bothPages_ = std::make_unique<TeeSurface>(page_, desktop_.screen());
}

int DrivenBackend::stop() {
    bothPages_.reset();
    desktop_.onStopped = onStopped;
    desktop_.stop();
    return ScriptedBackend::stop();
}

void DrivenBackend::setTitle(std::string_view title) {
    ScriptedBackend::setTitle(title);
    desktop_.setTitle(title);
}

void DrivenBackend::setMenu(int command, bool on) {
    ScriptedBackend::setMenu(command, on);
    desktop_.setMenu(command, on);
}

void DrivenBackend::serveMenu(bool on) {
    desktop_.serveMenu(on);
}

Surface &DrivenBackend::screen() {
    return *bothPages_;
}

void DrivenBackend::flush() {
    desktop_.flush();
}

void DrivenBackend::setStatus(StatusPart part, std::string_view text) {
    ScriptedBackend::setStatus(part, text);
    desktop_.setStatus(part, text);
}

void DrivenBackend::showMessages(const MessageRows &rows) {
    ScriptedBackend::showMessages(rows);
    desktop_.showMessages(rows);
}

void DrivenBackend::addMessage(const MessageRow &row) {
    desktop_.addMessage(row);
}

void DrivenBackend::setPointerText(const PointerText &text) {
    desktop_.setPointerText(text);
}

std::unique_ptr<DocumentSurface> DrivenBackend::document(int driver) {
    return desktop_.document(driver);
}

// ---- Dialogs

void DrivenBackend::loadDialog(DialogModel &dialog) {
    desktop_.loadDialog(dialog);
}

void DrivenBackend::showDialog(DialogModel &dialog, DialogPlacement placement) {
    ScriptedBackend::showDialog(dialog, placement);
    desktop_.showDialog(dialog, placement);
    DesktopBackend::settle();
}

void DrivenBackend::hideDialog(DialogModel &dialog) {
    desktop_.hideDialog(dialog);
    ScriptedBackend::hideDialog(dialog);
}

void DrivenBackend::unloadDialog(DialogModel &dialog) {
    desktop_.unloadDialog(dialog);
}

void DrivenBackend::refresh(DialogModel &dialog, int id) {
    ScriptedBackend::refresh(dialog, id);
    desktop_.refresh(dialog, id);
}

void DrivenBackend::pointAtRow(DialogModel &dialog, int id) {
    desktop_.pointAtRow(dialog, id);
}

void DrivenBackend::rollPanel() {
    desktop_.rollPanel();
}

void DrivenBackend::copyText(std::string_view text) {
    ScriptedBackend::copyText(text);
    desktop_.copyText(text);
}

} // namespace keldrin
