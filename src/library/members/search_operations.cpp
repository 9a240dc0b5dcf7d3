#include "tvx/library/members/bindings.h"

namespace tvx::library {

namespace {

using core::HTMLed;

constexpr Parameter find_parameters[] = {{u"Text", Type::String}, {u"Options", Type::Integer32}};
constexpr Parameter replace_parameters[] = {{u"Replacement", Type::String}};

Value find_text(HTMLed& control, Values& arguments) {
  return control.FindText(arguments[0].to_text(), arguments[1].to_integer32());
}

template <auto Operation>
Value result(HTMLed& control, Values&) {
  return (control.*Operation)();
}

Value replace_text(HTMLed& control, Values& arguments) { return control.ReplaceText(arguments[0].to_text()); }

Value replace_all_text(HTMLed& control, Values& arguments) {
  return control.ReplaceAllText(arguments[0].to_text());
}

constexpr Member rows[] = {
    operation(191, u"FindText", Type::Integer32, find_parameters,
              u"Looks for a text in the view in front, marks all hits, selects the first one and gives their "
              u"number. Options, added up: match case (1), whole words (2), a regular expression (4), in the "
              u"selection (8). Raises 5 for what is no regular expression, and for one that takes too long.",
              find_text),
    operation(192, u"FindNext", Type::Integer32, {},
              u"Selects the next hit and gives its number, from 1; 0 where there is none.",
              result<&HTMLed::FindNext>),
    operation(193, u"FindPrevious", Type::Integer32, {},
              u"Selects the hit before and gives its number, from 1; 0 where there is none.",
              result<&HTMLed::FindPrevious>),
    operation(194, u"FindCount", Type::Integer32, {},
              u"The number of hits. Its change is told as that of a property.", result<&HTMLed::FindCount>),
    operation(195, u"FindPosition", Type::Integer32, {}, u"Which hit is selected, from 1; 0 where none is.",
              result<&HTMLed::FindPosition>),
    operation(196, u"FindLocked", Type::Integer32, {}, u"The number of hits that may not be edited.",
              result<&HTMLed::FindLocked>),
    operation(
        197, u"ReplaceText", Type::Boolean, replace_parameters,
        u"Replaces the selected hit, $1 or ${name} being groups of a regular expression, and selects the "
        u"next one. False where no hit is selected or it may not be edited.",
        replace_text),
    operation(198, u"ReplaceAllText", Type::Integer32, replace_parameters,
              u"Replaces all hits that may be edited, as one step of undo, and gives their number.",
              replace_all_text),
    operation<&HTMLed::FindEnd>(199, u"FindEnd", u"Ends the search and takes its marks away."),
};

}  // namespace

std::span<const Member> search_operations() { return rows; }

}  // namespace tvx::library
