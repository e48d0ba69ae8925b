#include "tools/demo/Scene.h"

#include <CLI/CLI.hpp>
#include <jack/jack.h>
#include <xcb/xcb.h>

#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <string>
#include <string_view>

namespace {

bool hasTray(xcb_connection_t* connection)
{
    constexpr std::string_view Selection = "_NET_SYSTEM_TRAY_S0";
    const std::unique_ptr<xcb_intern_atom_reply_t, decltype(&std::free)> atom(
        xcb_intern_atom_reply(connection,
            xcb_intern_atom(connection, 0, Selection.size(), Selection.data()), nullptr),
        &std::free);
    if (!atom)
        return false;
    const std::unique_ptr<xcb_get_selection_owner_reply_t, decltype(&std::free)> owner(
        xcb_get_selection_owner_reply(
            connection, xcb_get_selection_owner(connection, atom->atom), nullptr),
        &std::free);
    return owner && owner->owner != XCB_WINDOW_NONE;
}

// True for a display with a tray, which shows the icon with its menu.
bool sessionHasDisplay()
{
    xcb_connection_t* const connection = xcb_connect(nullptr, nullptr);
    const bool works = xcb_connection_has_error(connection) == 0 && hasTray(connection);
    xcb_disconnect(connection);
    return works;
}

bool sessionHasJack()
{
    jack_set_error_function([](const char*) {});
    jack_set_info_function([](const char*) {});
    jack_client_t* const client = jack_client_open("kestrel-demo", JackNoStartServer, nullptr);
    if (client)
        jack_client_close(client);
    return client != nullptr;
}

} // namespace

int main(int argc, char* argv[])
{
    CLI::App arguments("Plays a scene between the console, the utility and the workstation.");
    std::filesystem::path pictures = "build/demo";
    std::filesystem::path approved = "tests/approved/panel";
    bool isPrivate = false;
    arguments.add_option("--pictures", pictures, "Folder for the pictures")->capture_default_str();
    arguments.add_option("--approved", approved, "Folder of what the panel must look like")
        ->capture_default_str();
    arguments.add_flag("--private", isPrivate, "Use a display and a JACK server of its own");
    CLI11_PARSE(arguments, argc, argv);

    try {
        const kestrel::stage::Studio::Options options {
            .useSessionDisplay = !isPrivate && sessionHasDisplay(),
            .useSessionJack = !isPrivate && sessionHasJack(),
        };
        const auto programs = std::filesystem::canonical("/proc/self/exe").parent_path();
        kestrel::Scene scene(programs, pictures, approved, options);
        using Ending = kestrel::Scene::Ending;
        const int missing = scene.play(
            options.useSessionDisplay ? Ending::WhenTheWorkstationIsClosed : Ending::AtOnce);
        std::cout << (missing == 0 ? "everything was observed\n" : "NOT everything was observed\n");
        return missing == 0 ? 0 : 1;
    } catch (const std::exception& error) {
        std::cerr << "kestrel-demo: " << error.what() << '\n';
        return 2;
    }
}
