#include "platform/linux/web/PolicyTranslation.h"

#include <gdk/gdk.h>
#include <libsoup/soup.h>

namespace orvu {
namespace {

NavigationType navigationType(WebKitNavigationAction* action) {
    switch (webkit_navigation_action_get_navigation_type(action)) {
        case WEBKIT_NAVIGATION_TYPE_LINK_CLICKED:
            // The engine says so of a click by a script too.
            return webkit_navigation_action_is_user_gesture(action) ? NavigationType::linkActivated
                                                                    : NavigationType::other;
        case WEBKIT_NAVIGATION_TYPE_FORM_SUBMITTED:
            return NavigationType::formSubmitted;
        case WEBKIT_NAVIGATION_TYPE_BACK_FORWARD:
            return NavigationType::backForward;
        case WEBKIT_NAVIGATION_TYPE_RELOAD:
            return NavigationType::reload;
        case WEBKIT_NAVIGATION_TYPE_FORM_RESUBMITTED:
            return NavigationType::formResubmitted;
        case WEBKIT_NAVIGATION_TYPE_OTHER:
            break;
    }
    return NavigationType::other;
}

/// The page's own policy has gone into the header already; a frame gives the frame's address.
Initiator initiator(WebKitURIRequest* request) {
    SoupMessageHeaders* const headers = webkit_uri_request_get_http_headers(request);
    const char* const referrer =
        headers ? soup_message_headers_get_one(headers, "Referer") : nullptr;
    return {referrer ? Url::parse(referrer) : std::nullopt};
}

}  // namespace

NavigationAction navigationAction(WebKitNavigationAction* action) {
    WebKitURIRequest* const request = webkit_navigation_action_get_request(action);
    const char* const uri = webkit_uri_request_get_uri(request);
    return {{uri ? Url::parse(uri) : std::nullopt, initiator(request)},
            navigationType(action),
            (webkit_navigation_action_get_modifiers(action) & GDK_CONTROL_MASK) != 0,
            static_cast<int>(webkit_navigation_action_get_mouse_button(action)),
            webkit_navigation_action_is_user_gesture(action) != FALSE};
}

NavigationResponse navigationResponse(WebKitResponsePolicyDecision* decision) {
    NavigationResponse response{
        webkit_response_policy_decision_is_main_frame_main_resource(decision) != FALSE,
        webkit_response_policy_decision_is_mime_type_supported(decision) != FALSE, ""};
    SoupMessageHeaders* const headers = webkit_uri_response_get_http_headers(
        webkit_response_policy_decision_get_response(decision));
    const char* const disposition =
        headers ? soup_message_headers_get_one(headers, "Content-Disposition") : nullptr;
    if (disposition) response.contentDisposition = disposition;
    return response;
}

}  // namespace orvu
