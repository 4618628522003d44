// The tree of a file: how lines and records are split into tokens, and their faults.
#include "frontend/syntax/expressions.h"
#include "frontend/syntax/fields.h"
#include "frontend/syntax/source.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>

using namespace orvex::frontend;
using namespace std::string_literals;
using std::string;

namespace {

Source parsed(const string& text) {
    Source source;
    source.bytes = text;
    parse_source(source);
    return source;
}

const char* const token_names[] = {
    "outside", "end",  "blank", "comment", "description", "unread", "ignored", "keyword", "model",
    "text",    "plus", "colon", "label",   "name",        "open",   "arg",     "comma",   "close",
    "list",    "if",   "word",  "attr",    "num",         "str",    "macro",   "sym"};

// The tokens of a line, as "name[text]", without blanks and its line end.
string tokens_of(const Source& source, Index line) {
    string all;
    const Index end = source.tree.records[line].token;
    for (Index token = source.tree.records[line - 1].token; token < end; ++token) {
        const TokenKind kind = source.tree.tokens[token].kind;
        if (kind == TokenKind::blank || kind == TokenKind::line_end) continue;
        all += (all.empty() ? "" : " ") + string(token_names[static_cast<int>(kind)]) + "[";
        all += string(text_of(source.bytes, range_of(source.tree, token))) + "]";
    }
    return all;
}

// The last line of a text in a model.
string last_line(const string& text) {
    const Source source = parsed("$MODEL:M\n" + text);
    return tokens_of(source, line_count(source.tree));
}

TEST(Tree, CutsRecordsIntoTokens) {
    const string long_label = "O:X  0123456789abcdefghijklmn:1";
    const std::pair<string, string> rows[] = {
        {"$PROD:Y(R, T) $(A.L(r) GT 1.E-3)  s : 0.5  ! no: field",
         "keyword[$PROD] colon[:] name[Y] open[(] arg[R] comma[,] arg[T] close[)] if[$] sym[(] "
         "word[A] attr[.L] sym[(] word[r] sym[)] word[GT] num[1.E-3] sym[)] label[s] colon[:] "
         "num[0.5] description[! no: field]"},
        {"$PROD:Y\nx O:X(I)#(J)$C rest  +T:1",
         "ignored[x] label[O] colon[:] name[X] open[(] arg[I] close[)] list[#] open[(] arg[J] "
         "close[)] if[$] word[C] word[rest] label[+T] colon[:] num[1]"},
        {"$PROD:Y\nO:X(\"a b\",T+1) z  Q:A(I)*%n% A:R",
         "label[O] colon[:] name[X] open[(] arg[\"a b\"] comma[,] arg[T+1] close[)] ignored[z] "
         "label[Q] colon[:] name[A] open[(] arg[I] close[)] sym[*] macro[%n%] label[A] colon[:] "
         "name[R]"},
        {"$PROD:Y\n+ VA: S:(A$B)*'c",
         "plus[+] label[VA] colon[:] label[S] colon[:] sym[(] "
         "word[A] sym[$] word[B] sym[)] sym[*] str['c]"},
        {"$PROD:Y\n" + long_label,
         "label[O] colon[:] name[X] ignored[0123] label[456789abcdefghijklmn] colon[:] num[1]"},
        {"$SECTORS: X\n A(S , T)$B  C$(D) ! d",
         "name[A] open[(] arg[S] comma[,] arg[T] close[)] if[$] word[B] name[C] if[$] sym[(] "
         "word[D] sym[)] description[! d]"},
        {"$SECTORS: X", "keyword[$SECTORS] colon[:] ignored[X]"},
        {"$peps:1.e-6 x", "keyword[$peps] colon[:] text[1.e-6 x]"},
        {"$CONSTRAINT:T(S)$X\n* c\nT(S) =E= Y ! ;",
         "word[T] sym[(] word[S] sym[)] sym[=E=] word[Y] description[! ;]"},
        {"$CONSTRAINT:T\nT =E= 1;\nV:X O:Y", "label[V] colon[:] name[X] label[O] colon[:] name[Y]"},
        {"$REPORT:\nV:X O:Y PROD:Z(R)",
         "label[V] colon[:] name[X] label[O] colon[:] name[Y] "
         "label[PROD] colon[:] name[Z] open[(] arg[R] close[)]"},
        {"$SECTORS:\n* $x", "comment[* $x]"},
        {"$SECTORS:\n" + string(250, ' ') + "ABCD  EF", "name[ABCD] unread[ EF]"},
        // A record with a fault is still split.
        {"$PROD:Y\nO PX Q 1", "word[O] word[PX] word[Q] num[1]"},
        {"$PROD Y(S) T:1",
         "keyword[$PROD] name[Y] open[(] arg[S] close[)] label[T] colon[:] "
         "num[1]"},
        {"$PRDO:Y T:1", "keyword[$PRDO] colon[:] name[Y] label[T] colon[:] num[1]"},
        {"$SECTORS:\nA(S B", "name[A] open[(] arg[S B]"},
        {"$WHAT:\nA(S B", "word[A] sym[(] word[S] word[B]"},
    };
    for (const auto& [text, tokens] : rows) EXPECT_EQ(last_line(text), tokens) << text;
}

// A letter for the kind of each line, with "!" for a fault in it; then the models.
string lines_of(const string& text) {
    const Source source = parsed(text);
    string all;
    for (Index record = 0; record < line_count(source.tree); ++record) {
        const RecordNode& node = source.tree.records[record];
        all += "om-*$.ne+rbu"[static_cast<int>(node.kind)];
        bool wrong = node.fault != Fault::none;
        for (Index field = node.field; field < source.tree.records[record + 1].field; ++field)
            wrong = wrong || source.tree.fields[field].fault != Fault::none;
        if (wrong) all += '!';
    }
    for (const ModelText& model : source.models) {
        all += " [" + model.name + "] " + std::to_string(model.line) + "-" +
               std::to_string(model.last) + (model.closed ? "" : "?");
    }
    return all;
}

TEST(Tree, SortsLinesAndFindsModels) {
    const string long_blank(255, ' ');
    const std::pair<string, string> rows[] = {
        {"", ""},
        {"* no model\n$SECTORS:", "oo"},
        {" $MODEL:M\n$model: \tm n \t\n", "om [M N \t] 2-2?"},
        {"$MODEL:0123456789012345678901234567890123\n$offtextual",
         "m. [0123456789012345678901234567890] 1-2"},
        {"$MODEL:" + string(248, ' ') + "M\n", "m [] 1-1?"},
        {"x\r\n$MODEL:A\r\n  Y:\r\n$OFFTEXT\r\nx\n$MODEL:../b\0c\n*\n\t \r \n+ Q:1\n"s,
         "ome.om*-+ [A] 2-4 [../B\0C] 6-9?"s},
        {"$MODEL:M\n" + long_blank + "$X\n! text\n +:\n$OFFTEXT", "m-e!e. [M] 1-5"},
        {"$MODEL:M\n$CONSTRAINT:T\n* ;\n+ X\n\nY =E= 1 ! ;\n$OFFTEXT;\nV:X\n$OFFTEXT",
         "m$*b-bbe. [M] 1-9"},
        {"$MODEL:M\n$constraint :T\nX\n$PROD:Y\nX:\n$SECTORS:\n+X\n$REPORT:\n+X:\n",
         "m$b$e$n$r! [M] 1-9?"},
        // A nearly correct keyword counts as the correct one; after an unknown one the kind of a
        // line is unknown.
        {"$MODEL:M\n$COMODITIES:\nX\n$SECTORS\nX\n$WHAT:\nX\n$OFFTXT\n$MODEL:N",
         "m$!n$!n$!u.!m [M] 1-8 [N] 9-9?"},
    };
    for (const auto& [text, lines] : rows) EXPECT_EQ(lines_of(text), lines) << text;
}

TEST(Tree, TakesFieldsApart) {
    const Source source = parsed("$MODEL:M\n$PROD:Y\n z O :X (I ,,J) w #(K) $ (C)  Q:  A B \n");
    const Index field = source.tree.records[2].field;
    const auto text = [&](Range range) { return string(text_of(source.bytes, range)); };
    const FieldParts parts = parts_of(source.tree, 2, field);
    string lists;
    for (const Range range : parts.own.arguments()) lists += text(range) + "|";
    for (const Range range : parts.extra.arguments()) lists += "#" + text(range);
    EXPECT_EQ(text(parts.label) + " " + text(parts.root) + " " + lists, "O X I||J|#K");
    EXPECT_EQ(text(parts.value) + "/" + text(parts.condition), "X (I ,,J) w/(C)");
    EXPECT_EQ(text(parts.before) + "/" + text(parts.ignored), "z/w");
    EXPECT_EQ(text(parts_of(source.tree, 2, field + 1).value), "A B");
}

// The place of the fault in the last line's first field.
string fault_in(const string& text) {
    const Source source = parsed("$MODEL:M\n" + text);
    const Index record = line_count(source.tree) - 1;
    const FieldNode& field = source.tree.fields[source.tree.records[record].field];
    if (field.fault == Fault::none) return "none";
    return string(text_of(source.bytes, fault_range(source.tree, field)));
}

TEST(Tree, MarksFaultsAtTheirPlaces) {
    const string block = "$PROD:Y\n";
    const std::pair<string, string> rows[] = {
        {block + "O:X(I  Q:1", "(I"},
        {block + "O:X(A,B,C,D,E,F,G,H)", "(A,B,C,D,E,F,G,H)"},
        {block + "O:X(A,B,C,D,E,F,G)", "none"},
        {block + "O:X(I)$(C Q:1", "$(C"},
        {block + "O:X(I)#J Q:1", "#J"},
        {block + "O:X(\"a) Q:1", "\"a)"},
        {block + "O:X(\") Q:1", "none"},
        {block + "Q:(A*B Q:1", "(A*B"},
        {"$SECTORS:\n A(S B", "A(S B"},
    };
    for (const auto& [text, place] : rows) EXPECT_EQ(fault_in(text), place) << text;
}

TEST(Expressions, KnowsANegatedValue) {
    for (const char* const value : {"-5", " ( -X0 ) ", "((-X0(S)))", "-(A+B)", "-A*(B-C)/2",
                                    "-1E-6", "-(-(-X0))", "-X.L(\"-\")"})
        EXPECT_TRUE(is_negated(value)) << value;
    for (const char* const value :
         {"", "5", "X0", "(X0-5)", "-A+B", "(-A-B)", "-(-X0)", "--5", "-A*-B", "(-A)*(-B)", "-",
          "(-", "-)", "-A GT B", "- and B", "-A$B", "\"-5\""})
        EXPECT_FALSE(is_negated(value)) << value;
}

TEST(Source, CountsColumnsInCharacters) {
    EXPECT_EQ(column_of("a\xC3\xBC\xE2\x82\xAC\xF0\x9F\x98\x80z", 10), 5);
    EXPECT_EQ(column_of("abc", 9), 4);
    for (const char* const no_utf8 : {"\xFCzz", "zz\xC3", "\xC0\x80z", "\xED\xA0\x80",
                                      "\xE0\x9F\xBF", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80"})
        EXPECT_EQ(column_of(no_utf8, 2), 3) << no_utf8;
}

TEST(Source, KeepsTheBytesOfLines) {
    const Source source = parsed("a\r\r\n\n\0b\rc\r"s);
    string lines;
    for (int line = 1; line <= line_count(source); ++line)
        lines +=
            string(line_text(source, line)) + "|" + std::to_string(line_begin(source, line)) + " ";
    EXPECT_EQ(lines, "a\r|0 |4 \0b\rc\r|5 "s);
}

}  // namespace
