#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

#include <dlfcn.h>

// GTK is on every machine with our tests, because a tray of theirs needs it; its headers are not.
// So what is used of it is declared here, with every object an untyped pointer.
namespace {

using Object = void*;

constexpr int kMargin = 16; // pixels around the text
constexpr int kWrapWords = 2;

template <typename Function>
Function* look(void* library, const char* name)
{
    auto* const found = reinterpret_cast<Function*>(dlsym(library, name));
    if (!found) {
        std::fprintf(stderr, "GTK lacks %s\n", name);
        std::exit(1);
    }
    return found;
}

std::string contentOf(const char* path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

/// desktop_gtk_page FILE LEFT TOP WIDTH HEIGHT: a window without a frame that shows a text to be
/// read, without a caret.
int main(int argc, char* argv[])
{
    if (argc != 6)
        return 1;
    void* const gtk = dlopen("libgtk-3.so.0", RTLD_NOW | RTLD_GLOBAL);
    if (!gtk) {
        std::fprintf(stderr, "%s\n", dlerror());
        return 1;
    }
    const std::string text = contentOf(argv[1]);
    look<void(int*, char***)>(gtk, "gtk_init")(nullptr, nullptr);

    const Object view = look<Object()>(gtk, "gtk_text_view_new")();
    look<void(Object, int)>(gtk, "gtk_text_view_set_editable")(view, 0);
    look<void(Object, int)>(gtk, "gtk_text_view_set_cursor_visible")(view, 0);
    look<void(Object, int)>(gtk, "gtk_text_view_set_wrap_mode")(view, kWrapWords);
    for (const char* side : {"left", "right", "top", "bottom"}) {
        const std::string name = std::string("gtk_text_view_set_") + side + "_margin";
        look<void(Object, int)>(gtk, name.c_str())(view, kMargin);
    }
    const Object buffer = look<Object(Object)>(gtk, "gtk_text_view_get_buffer")(view);
    look<void(Object, const char*, int)>(gtk, "gtk_text_buffer_set_text")(
        buffer, text.c_str(), static_cast<int>(text.size()));

    auto* const add = look<void(Object, Object)>(gtk, "gtk_container_add");
    const Object scrolled =
        look<Object(Object, Object)>(gtk, "gtk_scrolled_window_new")(nullptr, nullptr);
    add(scrolled, view);
    const Object window = look<Object(int)>(gtk, "gtk_window_new")(0);
    add(window, scrolled);
    look<void(Object, int)>(gtk, "gtk_window_set_decorated")(window, 0);
    look<void(Object, int, int)>(gtk, "gtk_window_move")(window, std::atoi(argv[2]),
                                                         std::atoi(argv[3]));
    look<void(Object, int, int)>(gtk, "gtk_window_set_default_size")(window, std::atoi(argv[4]),
                                                                     std::atoi(argv[5]));
    look<void(Object)>(gtk, "gtk_widget_show_all")(window);
    look<void()>(gtk, "gtk_main")();
    return 0;
}
