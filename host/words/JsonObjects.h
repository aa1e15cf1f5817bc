#pragma once

// JSON objects in a text that comes line by line, each as soon as its brace closes, however they
// are spread over lines.
//
//   JsonObjects objects(JsonObjects::Where::outermost);
//   objects.take("{\"text\" :");     // none yet
//   objects.take(" \"behind\"}");    // {.line = 1, .text = "{\"text\" :\n \"behind\"}"}

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace Varnelle {

class JsonObjects {
public:
    enum class Where {
        outermost,  ///< one after the other, or in one list
        inItsList,  ///< in a list that is a member of the one outermost object
    };
    struct Found {
        std::int64_t line = 0;  ///< where it begins, counted from 1
        std::string text;       ///< absent of its end when it is not whole
        bool isWhole = true;    ///< false for what is no object, and for one that was cut off

        friend bool operator==(const Found&, const Found&) = default;
    };

    explicit JsonObjects(Where where) : where_(where) {}

    /// What the next line brought. A line that begins with a brace where none can stand begins
    /// anew: what was open before it has been cut off (outermost objects only).
    [[nodiscard]] std::vector<Found> take(std::string_view line);
    /// What was open when the text ended.
    [[nodiscard]] std::vector<Found> finish();

private:
    bool isPlace() const;
    void take(char byte);
    void cutOff();

    Where where_;
    std::string open_;        // the braces and brackets around this place
    std::size_t inside_ = 0;  // size of `open_` within the wanted object; 0 outside of one
    char last_ = 0;           // byte that was no blank
    bool inText_ = false;
    bool escaped_ = false;
    std::int64_t line_ = 0;
    Found object_;          // being read
    bool isStray_ = false;  // this line has something outside of all objects
    std::vector<Found> found_;
};

}  // namespace Varnelle
