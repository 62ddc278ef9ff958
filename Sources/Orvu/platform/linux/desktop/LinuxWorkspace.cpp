#include "platform/linux/desktop/LinuxWorkspace.h"

#include "platform/linux/desktop/ApplicationId.h"
#include "platform/linux/GObjectPointer.h"

#include <gio/gdesktopappinfo.h>

#include <cstdlib>
#include <filesystem>
#include <memory>
#include <string>
#include <system_error>

namespace orvu {
namespace {

const std::string desktopName = std::string{applicationId} + ".desktop";

/// Whether a path means itself in a desktop file's command, also for those who know no quotes.
bool isPlain(const std::string& path) {
    constexpr const char* plain =
        "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/._+-@:,=";
    return path.find_first_not_of(plain) == std::string::npos;
}

/// This program's file as an argument of a desktop file's command; empty if the system doesn't
/// tell.
std::string executableArgument() {
    std::error_code error;
    std::string path = std::filesystem::read_symlink("/proc/self/exe", error).string();
    if (isPlain(path)) return path;
    std::string quoted = "\"";
    for (const char c : path) {
        // Once for the quotes, and once for the file's own escapes.
        if (c == '"' || c == '`' || c == '$' || c == '\\') quoted.append("\\\\");
        if (c == '%') quoted.push_back('%');
        quoted.append(c == '\\' ? 2 : 1, c);
    }
    return quoted + "\"";
}

/// Writes a file of the program's resources, with "@EXECUTABLE@" replaced by this program.
bool installResource(const char* resource, const std::filesystem::path& target) {
    GBytes* const bytes = g_resources_lookup_data(resource, G_RESOURCE_LOOKUP_FLAGS_NONE, nullptr);
    if (!bytes) return false;
    gsize size = 0;
    const auto* const data = static_cast<const char*>(g_bytes_get_data(bytes, &size));
    std::string text{data, size};
    g_bytes_unref(bytes);

    const std::string mark = "@EXECUTABLE@";
    if (const auto at = text.find(mark); at != std::string::npos) {
        const std::string program = executableArgument();
        if (program.empty()) return false;
        text.replace(at, mark.size(), program);
    }
    std::error_code error;
    std::filesystem::create_directories(target.parent_path(), error);
    return g_file_set_contents(target.c_str(), text.data(), static_cast<gssize>(text.size()),
                               nullptr) != FALSE;
}

/// The program as the desktop knows it, made known to it first if need be.
GObjectPointer<GDesktopAppInfo> registeredProgram() {
    if (auto* const known = g_desktop_app_info_new(desktopName.c_str())) {
        return GObjectPointer<GDesktopAppInfo>::adopt(known);
    }
    const std::filesystem::path data{g_get_user_data_dir()};
    const auto file = data / "applications" / desktopName;
    installResource("/app/orvu/Orvu/app.orvu.Orvu.svg",
                    data / "icons/hicolor/scalable/apps/app.orvu.Orvu.svg");
    if (!installResource("/app/orvu/Orvu/app.orvu.Orvu.desktop.in", file)) return {};
    return GObjectPointer<GDesktopAppInfo>::adopt(
        g_desktop_app_info_new_from_filename(file.c_str()));
}

std::string uriOf(const std::filesystem::path& file) {
    char* const uri = g_filename_to_uri(file.c_str(), nullptr, nullptr);
    std::string result{uri ? uri : ""};
    g_free(uri);
    return result;
}

using ShownFile = std::filesystem::path;

void openFolderOf(const ShownFile& file) {
    g_app_info_launch_default_for_uri_async(uriOf(file.parent_path()).c_str(), nullptr, nullptr,
                                            nullptr, nullptr);
}

void fileShown(GObject* bus, GAsyncResult* result, gpointer data) {
    const std::unique_ptr<ShownFile> file{static_cast<ShownFile*>(data)};
    GVariant* const answer = g_dbus_connection_call_finish(G_DBUS_CONNECTION(bus), result, nullptr);
    if (!answer) return openFolderOf(*file);
    g_variant_unref(answer);
}

/// Asks the file manager, whichever it is, once there is a bus to ask on.
void busCame(GObject*, GAsyncResult* result, gpointer data) {
    std::unique_ptr<ShownFile> file{static_cast<ShownFile*>(data)};
    const auto bus = GObjectPointer<GDBusConnection>::adopt(g_bus_get_finish(result, nullptr));
    if (!bus) return openFolderOf(*file);
    const std::string uri = uriOf(*file);
    const char* const uris[] = {uri.c_str(), nullptr};
    g_dbus_connection_call(bus.get(), "org.freedesktop.FileManager1",
                           "/org/freedesktop/FileManager1", "org.freedesktop.FileManager1",
                           "ShowItems", g_variant_new("(^ass)", uris, ""), nullptr,
                           G_DBUS_CALL_FLAGS_NONE, -1, nullptr, fileShown, file.release());
}

}  // namespace

bool LinuxWorkspace::makeDefaultBrowser() {
    const auto program = registeredProgram();
    if (!program) return false;
    bool isDefault = true;
    for (const char* const type : {"x-scheme-handler/http", "x-scheme-handler/https"}) {
        auto* const info = G_APP_INFO(program.get());
        isDefault = g_app_info_set_as_default_for_type(info, type, nullptr) != FALSE && isDefault;
    }
    return isDefault;
}

std::optional<std::string> LinuxWorkspace::programFor(const Url& url) {
    if (url.scheme().empty()) return std::nullopt;
    const auto program = GObjectPointer<GAppInfo>::adopt(
        g_app_info_get_default_for_uri_scheme(std::string{url.scheme()}.c_str()));
    if (!program) return std::nullopt;
    const char* const id = g_app_info_get_id(program.get());
    if (id && desktopName == id) return std::nullopt;
    return g_app_info_get_display_name(program.get());
}

void LinuxWorkspace::open(const Url& url) {
    g_app_info_launch_default_for_uri_async(url.absoluteString().c_str(), nullptr, nullptr, nullptr,
                                            nullptr);
}

void LinuxWorkspace::showFile(const std::filesystem::path& file) {
    g_bus_get(G_BUS_TYPE_SESSION, nullptr, busCame, std::make_unique<ShownFile>(file).release());
}

}  // namespace orvu
