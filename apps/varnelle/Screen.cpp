#include "apps/varnelle/Screen.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cwchar>
#include <string>
#include <string_view>

#include <curses.h>
#include <langinfo.h>
#include <termcap.h>
#include <unistd.h>

#include "PrompterCore/text/Columns.h"
#include "PrompterCore/text/Utf8.h"
#include "host/Failures.h"

namespace Varnelle {

namespace {

constexpr int escapeDelay = 25;     // milliseconds: an escape key is told from an arrow by then
constexpr double rowsPerNotch = 3;  // of the wheel, as in most terminals
constexpr wint_t controlC = 0x03, controlD = 0x04, controlL = 0x0C, escape = 0x1B;

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, CloseFile>;

void useUtf8() {
    const auto isUtf8 = [] { return std::string_view(nl_langinfo(CODESET)) == "UTF-8"; };
    if (std::setlocale(LC_CTYPE, "") != nullptr && isUtf8()) return;
    if (std::setlocale(LC_CTYPE, "C.UTF-8") != nullptr && isUtf8()) return;
    throw Unavailable("the system has no UTF-8 locale to show the script in");
}

std::string terminalName() {
    const char* name = std::getenv("TERM");
    return name == nullptr ? "" : name;
}

std::optional<ScreenCommand> commandOfFunctionKey(wint_t key) {
    switch (key) {
        case KEY_UP: return ScreenCommand::lineUp;
        case KEY_DOWN: return ScreenCommand::lineDown;
        case KEY_PPAGE: return ScreenCommand::paragraphUp;
        case KEY_NPAGE: return ScreenCommand::paragraphDown;
        case KEY_LEFT: return ScreenCommand::chapterUp;
        case KEY_RIGHT: return ScreenCommand::chapterDown;
        case KEY_HOME: return ScreenCommand::restart;
        case KEY_RESIZE: return ScreenCommand::resized;
        default: return std::nullopt;
    }
}

std::optional<ScreenCommand> commandOfCharacter(wint_t key) {
    switch (key) {
        case L' ':
        case L'p': return ScreenCommand::pause;
        case L'k': return ScreenCommand::lineUp;
        case L'j': return ScreenCommand::lineDown;
        case L'[': return ScreenCommand::chapterUp;
        case L']': return ScreenCommand::chapterDown;
        case L'r': return ScreenCommand::restart;
        case L'q':
        case L'Q':
        case controlD:
        case escape: return ScreenCommand::quit;
        case controlC: return ScreenCommand::interrupt;
        default: return std::nullopt;
    }
}

// How a style looks. The default colours stay the terminal's own, light or dark.
struct Look {
    attr_t attributes = A_NORMAL;
    short foreground = -1;  // -1: the terminal's own
};

Look lookOf(SpanStyle style, int colours) {
    // A middle grey is readable on light and dark; where there is none, dimming has to do.
    const Look past = colours >= 256 ? Look{A_NORMAL, 244} : Look{A_DIM, -1};
    const auto coloured = [colours](attr_t attributes, short foreground) {
        return Look{attributes, colours >= 8 ? foreground : short{-1}};
    };
    switch (style) {
        case SpanStyle::ahead: return {};
        case SpanStyle::reading: return {A_BOLD, -1};
        case SpanStyle::read: return past;
        case SpanStyle::heading: return coloured(A_BOLD | A_UNDERLINE, COLOR_CYAN);
        case SpanStyle::readHeading: return {past.attributes | A_UNDERLINE, past.foreground};
        case SpanStyle::marker: return coloured(A_BOLD, COLOR_RED);
        case SpanStyle::band: return coloured(A_NORMAL, COLOR_RED);
        case SpanStyle::status: return {A_REVERSE, -1};
        case SpanStyle::takeNeutral: return {A_REVERSE, -1};
        case SpanStyle::takeWaiting: return coloured(A_REVERSE, COLOR_YELLOW);
        case SpanStyle::takeRecording: return coloured(A_REVERSE | A_BOLD, COLOR_RED);
        case SpanStyle::takePractising: return coloured(A_REVERSE, COLOR_CYAN);
        case SpanStyle::keys: return past;
    }
    return {};
}

constexpr std::size_t styleCount = static_cast<std::size_t>(SpanStyle::keys) + 1;

// Whether an escape that was read is the key itself: then nothing follows it at once. The sequence
// of a key that the terminal's description does not know is read to its end instead.
bool isEscapeKey() {
    wint_t key = 0;
    const auto next = [&key] { return get_wch(&key) == OK; };
    if (!next() || key == escape) return true;
    const bool isSequence = key == L'[' || key == L'O';
    while (isSequence && next() && (key < L'@' || key > L'~')) {
    }
    return false;
}

// A text for the library below, which counts columns by the system's tables. Where these do not
// agree with ours, as for characters newer than they are, a replacement sign keeps the row
// straight.
std::wstring wide(std::string_view text) {
    std::wstring characters;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        const auto character = static_cast<wchar_t>(PrompterCore::Utf8::next(text, at));
        const std::int64_t columns = PrompterCore::columnsOf(text.substr(start, at - start));
        if (wcwidth(character) == columns) {
            characters += character;
        } else if (columns > 0) {
            characters += L'\uFFFD';
            characters.append(static_cast<std::size_t>(columns - 1), L' ');
        }
    }
    return characters;
}

}  // namespace

class Screen::Terminal {
public:
    explicit Terminal(Options options) {
        useUtf8();
        std::FILE* input = stdin;
        if (isatty(STDIN_FILENO) == 0) {
            keys_.reset(std::fopen("/dev/tty", "re"));
            input = keys_.get();
            if (input == nullptr) throw Unavailable("there is no terminal to read keys from");
        }
        // Asked for beforehand, since newterm loses memory over a terminal that it does not know.
        const bool isKnown = tgetent(nullptr, terminalName().c_str()) == 1;
        screen_ = isKnown ? newterm(nullptr, stdout, input) : nullptr;
        if (screen_ == nullptr)
            throw Unavailable("the terminal \"" + terminalName() +
                              "\" (TERM) is unknown here; --plain needs none");
        if (tigetstr("cup") == nullptr) {
            release();
            throw Unavailable("the terminal \"" + terminalName() +
                              "\" (TERM) cannot show a full screen; --plain needs none");
        }
        set_term(screen_);
        raw();
        noecho();
        nonl();
        curs_set(0);
        keypad(stdscr, TRUE);
        nodelay(stdscr, TRUE);
        set_escdelay(escapeDelay);
        mouseinterval(0);  // a notch is no click to be waited for
        mousemask(BUTTON4_PRESSED | BUTTON5_PRESSED, nullptr);
        chooseLooks(options);
    }
    Terminal(const Terminal&) = delete;
    Terminal& operator=(const Terminal&) = delete;
    ~Terminal() { release(); }

    static ScreenSize size() { return {.rows = getmaxy(stdscr), .columns = getmaxx(stdscr)}; }

    void put(const ScreenSpan& span) {
        const Style& style = styles_[static_cast<std::size_t>(span.style)];
        attr_set(style.attributes, style.pair, nullptr);
        const std::wstring text = wide(span.text);
        mvaddnwstr(static_cast<int>(span.row), static_cast<int>(span.column), text.data(),
                   static_cast<int>(text.size()));
    }

private:
    struct Style {
        attr_t attributes = A_NORMAL;
        short pair = 0;
    };

    void release() {
        endwin();
        delscreen(screen_);
    }

    void chooseLooks(Options options) {
        const bool colour =
            options.colour && has_colors() && start_color() == OK && use_default_colors() == OK;
        const int colours = colour ? COLORS : 0;
        for (std::size_t i = 0; i < styleCount; ++i) {
            const Look look = lookOf(static_cast<SpanStyle>(i), colours);
            styles_[i].attributes = look.attributes;
            if (look.foreground < 0) continue;
            const auto pair = static_cast<short>(i + 1);
            if (init_pair(pair, look.foreground, -1) == OK) styles_[i].pair = pair;
        }
    }

    File keys_;  // null while standard input serves
    SCREEN* screen_ = nullptr;
    Style styles_[styleCount];
};

Screen::Screen(Options options) : terminal_(std::make_unique<Terminal>(options)) {}

Screen::~Screen() = default;

std::vector<PromptLine> Screen::linesFor(const Script& script) const {
    return ScreenLayout::linesFor(script, Terminal::size());
}

std::vector<ScreenEvent> Screen::events() {
    std::vector<ScreenEvent> events;
    wint_t key = 0;
    for (int kind = get_wch(&key); kind != ERR; kind = get_wch(&key)) {
        if (kind == KEY_CODE_YES && key == KEY_MOUSE) {
            MEVENT mouse{};
            if (getmouse(&mouse) != OK) continue;
            if ((mouse.bstate & BUTTON4_PRESSED) != 0) events.push_back({{}, -rowsPerNotch});
            if ((mouse.bstate & BUTTON5_PRESSED) != 0) events.push_back({{}, rowsPerNotch});
            continue;
        }
        if (kind == OK && key == controlL) clearok(curscr, TRUE);
        if (kind == OK && key == escape && !isEscapeKey()) continue;
        const auto command =
            kind == KEY_CODE_YES ? commandOfFunctionKey(key) : commandOfCharacter(key);
        if (command) events.push_back({command, 0});
    }
    return events;
}

void Screen::draw(const ScreenView& view) {
    erase();
    for (const ScreenSpan& span : ScreenLayout::spansOf(view, Terminal::size())) {
        terminal_->put(span);
    }
    refresh();
}

}  // namespace Varnelle
