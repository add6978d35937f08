// clip_owner TEXT: takes the X clipboard with TEXT and serves it (UTF8_STRING and
// TARGETS) until another program takes it or clears it. Prints "owned <ms>" once it owns
// the clipboard and "lost <ms> cleared" or "lost <ms> replaced" when it no longer does
// (emptied, or taken by another copy), in wall-clock milliseconds, so a test can time
// what happens in between without process start-up in the figure.
#include <xcb/xcb.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace {

long long NowMs()
{
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

xcb_atom_t Atom(xcb_connection_t *c, const char *name)
{
    xcb_intern_atom_reply_t *r = xcb_intern_atom_reply(c, xcb_intern_atom(c, 0, uint16_t(std::strlen(name)), name), nullptr);
    const xcb_atom_t atom = r ? r->atom : XCB_ATOM_NONE;
    std::free(r);
    return atom;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: clip_owner TEXT\n");
        return 2;
    }
    const char *text = argv[1];
    xcb_connection_t *c = xcb_connect(nullptr, nullptr);
    if (xcb_connection_has_error(c))
        return 1;
    xcb_screen_t *screen = xcb_setup_roots_iterator(xcb_get_setup(c)).data;
    const xcb_window_t w = xcb_generate_id(c);
    const uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(c, XCB_COPY_FROM_PARENT, w, screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
    const xcb_atom_t clipboard = Atom(c, "CLIPBOARD");
    const xcb_atom_t utf8 = Atom(c, "UTF8_STRING");
    const xcb_atom_t targets = Atom(c, "TARGETS");
    const xcb_atom_t timestamp = Atom(c, "TIMESTAMP");
    // The server's time, from a property change of our own, stamps the claim.
    xcb_change_property(c, XCB_PROP_MODE_REPLACE, w, XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 10, "clip_owner");
    xcb_flush(c);
    xcb_timestamp_t claimed = XCB_CURRENT_TIME;
    while (xcb_generic_event_t *event = xcb_wait_for_event(c)) {
        const bool property = (event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY;
        if (property)
            claimed = reinterpret_cast<xcb_property_notify_event_t *>(event)->time;
        std::free(event);
        if (property)
            break;
    }
    xcb_set_selection_owner(c, w, clipboard, claimed);
    xcb_get_selection_owner_reply_t *owner =
        xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, clipboard), nullptr);
    const bool owned = owner && owner->owner == w;
    std::free(owner);
    if (!owned)
        return 1;
    std::printf("owned %lld\n", NowMs());
    std::fflush(stdout);

    while (xcb_generic_event_t *event = xcb_wait_for_event(c)) {
        const int type = event->response_type & 0x7f;
        if (type == XCB_SELECTION_CLEAR) {
            // Cleared (no owner now) or replaced by another program's copy.
            xcb_get_selection_owner_reply_t *now =
                xcb_get_selection_owner_reply(c, xcb_get_selection_owner(c, clipboard), nullptr);
            const bool cleared = !now || now->owner == XCB_NONE;
            std::free(now);
            std::printf("lost %lld %s\n", NowMs(), cleared ? "cleared" : "replaced");
            std::fflush(stdout);
            std::free(event);
            break;
        }
        if (type == XCB_SELECTION_REQUEST) {
            auto *req = reinterpret_cast<xcb_selection_request_event_t *>(event);
            xcb_atom_t property = req->property == XCB_ATOM_NONE ? req->target : req->property;
            if (req->target == utf8) {
                xcb_change_property(c, XCB_PROP_MODE_REPLACE, req->requestor, property, utf8, 8,
                                    uint32_t(std::strlen(text)), text);
            } else if (req->target == targets) {
                const xcb_atom_t list[] = {targets, timestamp, utf8};
                xcb_change_property(c, XCB_PROP_MODE_REPLACE, req->requestor, property, XCB_ATOM_ATOM, 32, 3, list);
            } else if (req->target == timestamp) {
                xcb_change_property(c, XCB_PROP_MODE_REPLACE, req->requestor, property, XCB_ATOM_INTEGER, 32, 1,
                                    &claimed);
            } else {
                property = XCB_ATOM_NONE;
            }
            xcb_selection_notify_event_t notify{};
            notify.response_type = XCB_SELECTION_NOTIFY;
            notify.time = req->time;
            notify.requestor = req->requestor;
            notify.selection = req->selection;
            notify.target = req->target;
            notify.property = property;
            xcb_send_event(c, 0, req->requestor, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char *>(&notify));
            xcb_flush(c);
        }
        std::free(event);
    }
    xcb_disconnect(c);
    return 0;
}
