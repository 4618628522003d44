// The meaning of a tree: names and their uses, blocks and nests, and everything at which the
// translator would stop, even in a text with faults.
#include "frontend/model/model.h"

#include "frontend/findings/faults.h"
#include "frontend/model/build.h"
#include "frontend/syntax/source.h"

#include <gtest/gtest.h>
#include <string>
#include <utility>

using namespace orvex::frontend;
using std::string;

namespace {

struct Built {
    Source source;
    Model model;
};

Built built(const string& text) {
    Built result;
    result.source.bytes = "$MODEL:M\n" + text;
    parse_source(result.source);
    result.model = build_model(result.source.bytes, result.source.tree, 0, false);
    return result;
}

// LINE:COLUMN of a place.
string place(const Source& source, Range range) {
    const int line = line_of(source.tree, range.begin);
    return std::to_string(line) + ":" + std::to_string(range.begin - line_begin(source, line) + 1);
}

// The kind and dimension of a name, and its uses.
string uses(const Built& it, const string& name) {
    const Symbol* const symbol = find_symbol(it.model, name);
    if (symbol == nullptr) return "unknown";
    string all(kind_name(symbol->kind));
    all += " " + std::to_string(symbol->dimension);
    for (Index use = symbol->first_use; use != no_index; use = it.model.uses[use].next) {
        all += " " + place(it.source, it.model.uses[use].range) + "=";
        all += role_name(it.model.uses[use].role);
    }
    return all;
}

TEST(Model, KnowsEachUseOfAName) {
    const Built it = built(
        "$SECTORS:\n Y(S)  ! text\n$COMMODITIES:\n py(S) PL\n$CONSUMERS:\n RA\n"  // 3, 5, 7
        "$AUXILIARY:\n TAU\n"                                                     // 9
        "$PROD:Y(S)$(Y0(S) GT MIN(Z,1.E3))  s:SIG  va(s):0\n"                     // 10
        " O:PY(S)  Q:(Y0(S)*\"Z\")  A:RA  N:TAU\n"                                // 11
        " I:PL  Q:-F(S)  va:  T:G$H  P:%Z%\n I:PY(S+1)#(T)\n"                     // 12, 13
        "$DEMAND:RA\n E:PL  Q:E0(\"Z\")  R:TAU\n"                                 // 14, 15
        "$CONSTRAINT:TAU\n* Z\n  TAU.L =E= py(\"S\") * K;\n"                      // 16
        "$REPORT:\n V:W(S)  I:PL  PROD:Y(S)\n");                                  // 20
    const std::pair<string, string> rows[] = {
        {"Y", "sector 1 3:2=declared 10:7=block 20:21=report"},
        {"py", "commodity 1 5:2=declared 11:4=produced 13:4=used 18:13=constraint"},
        {"PL", "commodity 0 5:8=declared 12:4=used 15:4=endowed 20:12=report"},
        {"RA", "consumer 0 7:2=declared 11:28=receives_tax 14:9=block"},
        {"TAU",
         "auxiliary variable 0 9:2=declared 11:34=rate 15:21=ration 16:13=constraint "
         "18:3=constraint"},
        {"Y0", "host's name -1 10:13=condition 11:14=value"},
        {"SIG", "parameter 0 10:38=value"},
        {"F", "host's name -1 12:11=value"},
        {"G", "parameter 0 12:24=value"},
        {"H", "host's name -1 12:26=condition"},
        {"E0", "parameter 1 15:10=value"},
        {"K", "host's name -1 18:23=constraint"},
        {"Z", "host's name -1 10:26=condition"},
        {"W", "report variable 1 20:4=report"},
        {"T", "set -1 13:13=set"},
        {"MIN", "unknown"},
    };
    for (const auto& [name, expected] : rows) EXPECT_EQ(uses(it, name), expected) << name;
    // S: in the declarations, the opening record and its condition, and so on.
    EXPECT_EQ(uses(it, "S").substr(0, 43), "set 0 3:4=set 5:5=set 10:9=set 10:16=condit");
    EXPECT_NE(uses(it, "S").find(" 13:7=lead"), string::npos);
    const Symbol& y = *find_symbol(it.model, "Y");
    EXPECT_EQ(text_of(it.source.bytes, y.description), "text");
    EXPECT_EQ(it.model.errors.size(), 0U);
}

TEST(Model, PutsNestsTogether) {
    const Built it = built("$PROD:Y(R)  s:1  t:0  VA(s):0.5  K(VA):2  R.TL(VA):\n+ X(none):1\n");
    string all;
    for (const Nest& nest : it.model.nests) {
        all += nest.name;
        if (nest.parent != no_index) all += "<" + it.model.nests[nest.parent].name;
        all += " ";
    }
    EXPECT_EQ(all, "S T VA<S K<VA R.TL<VA X ");
}

TEST(Model, HasEntriesWithTheirFields) {
    const Built it = built(
        "$PROD:Y(R)  S:1\n+ T:2\n"
        "O:PY(R)\n\n* text\n+ Q:1\nI:PL Q:2\n"
        "$REPORT:\nV:U O:PY(R) PROD:Y(R)\n$PEPS:1\nO:PX\n$DEMAND:H\nE:PL Q:1\n");
    string all;
    for (const Block& block : it.model.blocks) {
        all += block.keyword->word;
        all += "(" + std::to_string(fields_of(it.model, block).size()) + ")";
        for (const Entry& entry : entries_of(it.model, block)) {
            all += " " + reference_text(it.model, it.source.bytes, entry.head.reference);
            all += "+" + std::to_string(fields_of(it.model, entry).size());
        }
        all += "; ";
    }
    EXPECT_EQ(all, "PROD(2) PY(R)+1 PL+1; REPORT(0) U+2; PEPS(0) PX+0; DEMAND(0) PL+1; ");
}

// The errors of a model in the order of the translator's steps: place, code, further places, and
// the last line read if it differs.
string errors(const string& text) {
    const Built it = built(text);
    string all;
    for (const Error& error : it.model.errors) {
        all += (all.empty() ? "" : "; ") + place(it.source, error.place) + " ";
        all += code_of(error.fault);
        for (const Range also : error.also) all += " +" + place(it.source, also);
        if (error.read != error.record) all += " <" + std::to_string(error.read + 1);
    }
    return all;
}

const string names = "$SECTORS:\n Y  Z(S)\n$COMMODITIES:\n P  PS(S)\n$CONSUMERS:\n C\n";  // to 7

TEST(Model, FindsAllErrorsInTheTranslatorsOrder) {
    const std::pair<string, string> rows[] = {
        {"$PROD:Z(S)\n O:PS(S)  Q:A(S)\n I:P  Q:A(T)\n+ T:B(T)\n", "10:11 set-not-looped +11:7"},
        // Each name once, with the places where it is used wrongly in the same way.
        {"$PROD:Y\n O:Y Q:1\n I:Y Q:1 A:P\n I:PS Q:1\n I:P(S) Q:1\n",
         "9:4 kind-mismatch +10:4; 10:12 kind-mismatch; 11:4 dimension-mismatch; "
         "12:4 dimension-mismatch"},
        // For an entry of one field, the next record is checked before the entry's own name is
        // entered.
        {"$PROD:Y\n O:C\n\n* text\n+ junk\n I:C\n O:P Q:1\n",
         "12:1 label-missing; 9:4 kind-mismatch +13:4 <12"},
        {"$PROD:Y\n O:C\n* text\n", "9:4 kind-mismatch <10"},
        // After a fault the rest is read as if that place were right.
        {"$PROD:Z(S\n O:PS(S) Q:(1\n I:P Q:1$(A T:B(S)\n",
         "8:8 argument-list-unclosed; 9:12 expression-unclosed; 10:9 condition-unbalanced"},
        {"$PORD:Z(S)\n O:PS(S)\n$DEMAND C\n D:P\n",
         "8:1 keyword-unknown; 10:1 keyword-colon-missing"},
        {"$PROD:Z(S)\n O:PS(S+1) Q:1\n I:PS(T+1) Q:A(T)\n I:PS(S+1-1) Q:A(S-1)\n",
         "10:7 lead-set-not-looped; 10:16 set-not-looped; 11:7 lead-and-lag; 11:18 set-not-looped"},
        {"$REPORT:\n V:R\n V:R1 I:P I:P\n+ X\n O:P\n V:R2 I:Q1 PROD:Y\n V:R3 S:P\n"
         " V:R4 O:P PROD:Y X:1\n V:R5 O:P$A\n$SECTORS:\n W\n",
         "9:2 report-item-missing; 10:11 report-block-invalid; 11:1 report-continued; 12:2 "
         "report-name-missing; "
         "13:9 report-name-undeclared; 14:7 report-condition; 15:18 report-field-extra; "
         "16:10 report-condition; 17:1 keyword-after-report"},
        {"$CONSTRAINT:X\n X =E= 0;\n$CONSTRAINT:P(S)\n P =E= 0;\n",
         "8:13 constraint-name-unknown; 10:13 constraint-kind-mismatch"},
        {"$AUXILIARIES:\n T\n$CONSTRAINT:T\n T =E= 0;\n", "10:13 constraint-name-unknown"},
        // After a missing end nothing can be judged.
        {"$ONTEXT\n$PROD:P\n O P\n", "8:1 keyword-colon-missing"},
    };
    for (const auto& [text, expected] : rows) EXPECT_EQ(errors(names + text), expected) << text;
}

TEST(Model, KnowsTheLimits) {
    const string name65(65, 'N');
    const string name66(66, 'N');
    string many = "$SECTORS:\n";
    for (int i = 0; i < 1000; ++i) many += " X" + std::to_string(i) + "\n";
    // 'O:N' and its arguments take 6 + 4 + 5 * (10 + n) columns of a statement.
    const auto entry = [](std::size_t n) {
        string text = "$PROD:Y\n O:N(";
        for (int i = 0; i < 5; ++i)
            text += (i > 0 ? "," : "") + string(n, static_cast<char>('A' + i));
        return text + ")\n";
    };
    const std::pair<string, string> rows[] = {
        {"$SECTORS:\n " + name65 + "\n", ""},
        {"$SECTORS:\n " + name66 + "\n", "3:2 name-too-long"},
        {"$SECTORS:\n A(" + name66 + ")\n", "3:4 set-name-too-long"},
        {many, ""},
        {many + " X1\n Y\n Z\n", "1004:2 too-many-names"},
        {"$PROD:Y\n O:P Q:" + string(242, '1') + "\n", ""},
        {"$PROD:Y\n O:P Q:1 T:" + string(120, '1') + "\n", "3:12 value-field-too-long"},
        {entry(41), ""},
        {entry(43), "3:4 name-field-too-long"},
    };
    for (const auto& [text, expected] : rows)
        EXPECT_EQ(errors(text), expected) << text.substr(0, 60);
}

}  // namespace
