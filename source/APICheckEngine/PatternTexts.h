// The texts of every regular expression the scanners compile, in the engine's
// own dialect; the tests, benchmarks and fuzz seeds read them from here too.
// Patterns that are built around a name have a function that builds them.
#pragma once

#include <string>

namespace patterns {

// Script function headers: `function name(a, b)` or `name : function(a)`.
extern const char kFunctionHeader[];

// Markup: a whole tag, the start and end of an <object> tag in any letter case,
// and an element id in double or single quotes.
extern const char kTag[];
extern const char kObjectStart[];
extern const char kObjectEnd[];
extern const char* const kQuotedIdForms[2];
// A call with `symbol` among its arguments: `init(1, symbol)`.
std::string CallWithArgument(const std::string& symbol);

// `x = document.getElementById("id").Method("arg"`, `x = $("id").Method(...`
// and `x = document.embeds[n].Method(...`, and the first two as alternatives.
extern const char kGetElementByIdForm[];
extern const char kDollarForm[];
extern const char kEmbedsForm[];
std::string ElementAccessForm();

// A look-up used directly, `document.getElementById("id").` or `$("id").`,
// with nothing assigned.
std::string DirectUse();
// The assigned names in `a.b = ...`.
extern const char kAssignmentTarget[];
// `symbol` as the argument of a look-up, quoted or not: `("symbol")`.
std::string SymbolArgument(const std::string& symbol);

// Calls `name.method(...)` with a separator byte before the name.
std::string CallsOn(const std::string& name);
// The method name of the extension framework's generic call `Execute("Name")`.
extern const char kExecuteCall[];
// An element look-up `("id")` (or `(name)` in a rebuilt SWF statement), then a
// method call `.method(`; then the look-up up to the member access's dot; then
// the look-up with the method name but no parenthesis.
std::string LookUpMethodCall(const std::string& id);
std::string LookUpMember(const std::string& id);
std::string LookUpMethodName(const std::string& id);

// A dot, optional blanks, a name, optional blanks, an opening parenthesis: the
// leftmost such place in a call text names the method called.
extern const char kMethodCall[];

}  // namespace patterns
