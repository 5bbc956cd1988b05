#include <cstdio>
#include <initializer_list>

#include <dlfcn.h>

// GTK is on every machine with our tests, because a tray of theirs needs it; its headers are not.
// So what is used of it is declared here, with every object an untyped pointer.
namespace {

using Object = void*;
using Callback = void (*)();

const char* logFile = nullptr;

template <typename Function>
Function* look(void* library, const char* name)
{
    auto* const found = reinterpret_cast<Function*>(dlsym(library, name));
    if (!found)
        std::fprintf(stderr, "GTK lacks %s\n", name);
    return found;
}

void carryOut()
{
    if (std::FILE* log = std::fopen(logFile, "a")) {
        std::fputc('x', log);
        std::fclose(log);
    }
}

using PopUp = void(Object menu, const void* event);
PopUp* popUp = nullptr;

int pressed(Object, const void* event, Object menu)
{
    popUp(menu, event);
    return 1;
}

} // namespace

/// desktop_gtk_menu FILE: a window in which every press opens a menu. Each entry that is carried
/// out adds a byte to the file.
int main(int argc, char* argv[])
{
    constexpr int kButtonPressMask = 1 << 8;
    logFile = argc > 1 ? argv[1] : "";
    void* const gtk = dlopen("libgtk-3.so.0", RTLD_NOW | RTLD_GLOBAL);
    if (!gtk) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    auto* const init = look<void(int*, char***)>(gtk, "gtk_init");
    auto* const newWindow = look<Object(int)>(gtk, "gtk_window_new");
    auto* const resize = look<void(Object, int, int)>(gtk, "gtk_window_resize");
    auto* const newMenu = look<Object()>(gtk, "gtk_menu_new");
    auto* const newEntry = look<Object(const char*)>(gtk, "gtk_menu_item_new_with_label");
    auto* const append = look<void(Object, Object)>(gtk, "gtk_menu_shell_append");
    auto* const addEvents = look<void(Object, int)>(gtk, "gtk_widget_add_events");
    auto* const show = look<void(Object)>(gtk, "gtk_widget_show_all");
    auto* const run = look<void()>(gtk, "gtk_main");
    auto* const connect = look<unsigned long(Object, const char*, Callback, Object, Callback, int)>(
        gtk, "g_signal_connect_data");
    popUp = look<PopUp>(gtk, "gtk_menu_popup_at_pointer");
    if (!init || !newWindow || !resize || !newMenu || !newEntry || !append || !addEvents || !show ||
        !run || !connect || !popUp)
        return 1;

    init(&argc, &argv);
    const Object window = newWindow(0);
    resize(window, 500, 400);
    const Object menu = newMenu();
    for (const char* name : {"uno", "dos", "tres"}) {
        const Object entry = newEntry(name);
        connect(entry, "activate", carryOut, nullptr, nullptr, 0);
        append(menu, entry);
    }
    show(menu);
    addEvents(window, kButtonPressMask);
    connect(window, "button-press-event", reinterpret_cast<Callback>(&pressed), menu, nullptr, 0);
    show(window);
    run();
    return 0;
}
