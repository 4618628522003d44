// The statements of a generator file, taken apart: what each prints, and for which input line.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace orvex::frontend {

enum class Form {
    banner,  // PUT'$SECTORS:'/;        label "$SECTORS"
    name,    // PUT /,'Y''.'S.TL;       a declared name: no label
    head,    // PUT /,'$PROD:Y''.'...;  first field of a block, an entry or a report record: label,
             // name
    more,  // PUT /'+','A:RA';        a further field with a name (also the later fields of a report
           // record)
    value,      // PUT /,'+Q:'Y0(S);       a further field with a value
    option,     // PUT /,'$PEPS:1.E-6'
    loop,       // LOOP((S)$(P(S)),
    guard,      // IF(ABS(Y0(S)) GT ORVEPS,
    condition,  // IF ((ORD(T) GT 1),
    close,      // );
    other,      // PUT /; and what is not known
};

struct Statement {
    int line = 0;   // in the translator's count; 0 where it does not fit the columns (above 99999)
    int level = 0;  // open levels around it: two blanks each
    Form form = Form::other;
    std::string label;  // "$PROD", "O", "A", "Q", "R.TL"; no colon
    std::string name;   // of name, head, more
    std::vector<std::string>
        arguments;          // of name, head, more: `S`, `T+1`, `"US"`; of loop: its sets
    std::string value;      // of value: the number or expression; of option: all behind "$"
    std::string condition;  // of a statement in an IF of its own, of loop, guard, condition
};

// Reads a generator file, complete or broken off. Lines without a line number are left out.
std::vector<Statement> read_generator(std::string_view text);

// "PY(S,"US")": name and arguments as a modeller writes them.
std::string reference(const std::string& name, const std::vector<std::string>& arguments);
std::string reference(const Statement& statement);

}  // namespace orvex::frontend
