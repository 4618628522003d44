// The statements of a generator file, taken apart: what each prints, and for which input line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

enum class Form {
    // PUT'$SECTORS:'/; opens a declaration block. Its label is "$SECTORS".
    banner,
    // PUT /,'Y''.'S.TL; a declared name, without a label.
    name,
    // PUT /,'$PROD:Y''.'...; the first field of a block, an entry or a report record: label, name.
    head,
    // PUT /'+','A:RA'; a further field with a name, also the later fields of a report record.
    more,
    // PUT /,'+Q:'Y0(S); a further field with a value.
    value,
    // PUT /,'$PEPS:1.E-6'
    option,
    // LOOP((S)$(P(S)),
    loop,
    // IF(ABS(Y0(S)) GT ORVEPS,
    guard,
    // IF ((ORD(T) GT 1),
    condition,
    // );
    close,
    // PUT /; and what is not known.
    other,
};

struct Statement {
    // In the translator's count; 0 where it does not fit the columns (above 99999).
    int line = 0;
    // Open levels around it: two blanks each.
    int level = 0;
    Form form = Form::other;
    // "$PROD", "O", "A", "Q", "R.TL"; no colon
    std::string label;
    // Of name, head, more.
    std::string name;
    // Of name, head, more: `S`, `T+1`, `"US"`; of loop: its sets.
    std::vector<std::string> arguments;
    // Of value: the number or expression; of option: all behind "$".
    std::string value;
    // Of a statement in an IF of its own, of loop, guard, condition.
    std::string condition;
};

// Reads a generator file, complete or broken off. Lines without a line number are left out.
std::vector<Statement> read_generator(std::string_view text);

// "PY(S,"US")": name and arguments as a modeller writes them.
std::string reference(const std::string& name, const std::vector<std::string>& arguments);
std::string reference(const Statement& statement);

}  // namespace orvex::frontend
