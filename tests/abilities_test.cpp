// What an editor asks about a text: abilities of the language server, without its protocol.
#include "frontend/abilities/completion.h"
#include "frontend/abilities/name_places.h"
#include "frontend/abilities/outline.h"
#include "frontend/abilities/rename.h"

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <utility>
#include <vector>

using namespace orvex::frontend;
using std::string;

namespace {

Document read(const string& text) {
    Document document;
    set_text(document, text);
    read_text(document);
    return document;
}

// LINE:COLUMN of an offset, counted from 1.
string place(const Document& document, Offset offset) {
    const Position position = position_at(document, offset);
    return std::to_string(position.line + 1) + ":" + std::to_string(position.character + 1);
}

Offset offset_of(const Document& document, const string& place) {
    const std::size_t colon = place.find(':');
    return offset_at(document,
                     {static_cast<std::uint32_t>(std::stoul(place.substr(0, colon))) - 1,
                      static_cast<std::uint32_t>(std::stoul(place.substr(colon + 1))) - 1});
}

// Two models, of which only the first has a set in its labels, and a host program that uses both.
const string two_models =
    "* S in a comment\n"
    "SETS S  Goods / \"S\", T /;\n"
    "PARAMETER A0(S);  A0(S) = 1;\n"
    "$ONTEXT\n"
    "$MODEL:ONE\n"  // 5
    "$SECTORS:\n"
    " Y(S)          ! Making S\n"
    "$COMMODITIES:\n"
    " P(S)  L\n"
    "$CONSUMERS:\n"  // 10
    " H\n"
    "$PROD:Y(S)  s:0  va(s):1  S.TL:1\n"
    " O:P(S)  Q:A0(S)\n"
    " I:L  Q:(a0(S)*Y.L(S))  VA:  T:TX\n"
    " I:P(S+1)  Q:1  S.TL:\n"  // 15
    "$DEMAND:H$(ABS(TX) GT 0)\n"
    " D:L\n"
    " E:L  Q:E0(\"S\")\n"
    "$OFFTEXT\n"
    "Y.L(S) = 1;  H.FX = %H%*2H;  X('H') = Bob's H;\n"  // 20
    "$INCLUDE H.GEN\n"
    "$ONTEXT\n"
    "Y\n"
    "$OFFTEXT\n"
    "$MODEL:TWO\n"  // 25
    "$SECTORS:\n"
    " Z\n"
    "$COMMODITIES:\n"
    " L\n"
    "$PROD:Z\n"  // 30
    " O:L Q:A0(\"X\")\n"
    "$REPORT:\n"
    " V:W  O:L  PROD:Z\n"
    "$OFFTEXT\n"
    "EQ(S)..Z.L =E= L.L + W.L;\n";

// "PLACE=ROLE" for each place of a target; "!" marks its definition, "+" places where it is
// written.
string places(const Document& document, const Target& target) {
    string all;
    for (const NamedPlace& named : places_of(document, target)) {
        all += (all.empty() ? "" : " ") + place(document, named.range.begin) + "=";
        all += named.model == no_index ? "host" : named.in_label ? "label" : role_name(named.role);
        all += string(named.defines ? "!" : "") + (is_written_at(named) ? "+" : "");
    }
    return all;
}

TEST(NamePlaces, AreAllThatMeanTheSame) {
    struct Row {
        string at;
        string definition;
        string places;
    };
    const string set =
        "2:6=host! 3:14=host 3:22=host 7:4=set 9:4=set 12:9=set 12:27=label 13:6=set 13:15=set "
        "14:13=value 14:20=value 15:6=lead 15:17=label 20:5=host 35:4=host";
    const Row rows[] = {
        {"12:9", "2:6", set},
        {"15:7", "2:6", set},   // the end of the name, before "+1"
        {"15:17", "2:6", set},  // in a label
        {"20:5", "2:6", set},   // in the host program
        {"14:16", "7:2", "7:2=declared!+ 12:7=block+ 14:16=value 20:1=host"},
        {"13:4", "9:2", "9:2=declared!+ 13:4=produced+ 15:4=used"},
        // A name of both models: each has its own, and between them it may be either.
        {"17:4", "9:8", "9:8=declared!+ 14:4=used 17:4=demanded 18:4=endowed+"},
        {"31:4", "29:2", "29:2=declared!+ 31:4=produced+ 33:9=report"},
        {"35:16", "", ""},
        // Not in "%H%", in a number, in quotes or in a control line.
        {"16:9", "11:2", "11:2=declared!+ 16:9=block+ 20:14=host 20:45=host"},
        {"31:8", "3:11", "3:11=host! 3:19=host 13:12=value 14:10=value 31:8=value"},
        {"14:33", "", "14:32=value 16:16=condition"},
        {"35:8", "27:2", "27:2=declared!+ 30:7=block+ 33:17=report 35:8=host"},
        {"33:4", "33:4", "33:4=report!+ 35:22=host"},
        // Nests.
        {"14:25", "12:18", "12:18=label!+ 14:25=label"},
        {"12:21", "12:13", "12:13=label!+ 12:21=label"},
        {"15:19", "12:27", "12:27=label!+ 15:17=label"},
        // A comment, an element, a label of the notation, a function, an operator, a keyword.
        {"1:3", "", ""},
        {"23:1", "", ""},
        {"18:12", "", ""},
        {"13:2", "", ""},
        {"16:12", "", ""},
        {"16:20", "", ""},
        {"10:3", "", ""},
        {"99:99", "", ""},
    };
    const Document document = read(two_models);
    for (const Row& row : rows) {
        const auto target = target_at(document, offset_of(document, row.at));
        EXPECT_EQ(target ? places(document, *target) : "", row.places) << row.at;
        const auto definition = target ? definition_of(document, *target) : std::nullopt;
        EXPECT_EQ(definition ? place(document, definition->begin) : "", row.definition) << row.at;
    }
}

// A line for each item, with its places, indented by its level.
string lines_of(const Document& document, const std::vector<OutlineItem>& items,
                const string& indent = "") {
    string all;
    for (const OutlineItem& item : items) {
        all += indent + item.name + " " + place(document, item.range.begin) + "-" +
               place(document, item.range.end) + " " + place(document, item.selection.begin);
        if (item.kind) all += string(" ").append(kind_name(*item.kind));
        if (!item.detail.empty()) all += ": " + item.detail;
        all += "\n" + lines_of(document, item.items, indent + " ");
    }
    return all;
}

TEST(Outline, HasModelsBlocksAndTheirNames) {
    const Document document = read(
        "$MODEL:A\n$SECTORS:\n Y(S)  ! Making\n* text\n\n$PROD: Y(S)$B(S)  s:1\n O:P Q:1\n"
        "$PEPS:1\n$CONSTRAINT:T\n T =G= 0;\n$REPORT:\n V:W(S)  O:P\n$OFFTEXT\ntext\n$MODEL:\n$X");
    EXPECT_EQ(lines_of(document, outline_of(document)),
              "A 1:1-13:9 1:8\n"
              " $SECTORS 2:1-3:16 2:1\n"
              "  Y(S) 3:2-3:3 3:2 sector: Making\n"
              " $PROD:Y(S) 6:1-7:9 6:1 sector\n"
              " $CONSTRAINT:T 9:1-10:10 9:1 auxiliary variable\n"
              " $REPORT 11:1-12:13 11:1\n"
              "  W(S) 12:4-12:5 12:4 report variable\n"
              "$MODEL: 15:1-16:3 15:1\n");
}

// The text with a new name in all places, including those in the host program.
string renamed_text(const Document& document, const Renaming& renaming, const string& name) {
    string text = document.source.bytes;
    for (auto at = renaming.places.rbegin(); at != renaming.places.rend(); ++at)
        text.replace(at->range.begin, at->range.end - at->range.begin, name);
    return text;
}

TEST(Completion, OffersWhatFitsThere) {
    const string head = "$MODEL:M\n$SECTORS:\n Y(R)\n$COMMODITIES:\n P(R,S)  PT(T)\n$PROD:Y(R)\n";
    const std::pair<string, string> rows[] = {
        // The sets of the block, then those of the entry, then the others.
        {" O:P(R,S)  Q:A(", "R looped over here\nS looped over here\nT \n"},
        {" O:", "P(R,S) \nPT(T) \n"},
        {"$REPORT:\n V:V  ", "O: \nI: \nD: \nW: \nPROD: \nDEMAND: \n"},
    };
    for (const auto& [row, offered] : rows) {
        const Document document = read(head + row);
        string found;
        for (const CompletionItem& item :
             complete_at(document, static_cast<Offset>(document.source.bytes.size())).items)
            found += item.label + " " + item.detail + "\n";
        EXPECT_EQ(found, offered) << row;
    }
}

TEST(Rename, IsRefusedWithAReason) {
    const string labels = ", and labels cannot be renamed";
    const string long_name(66, 'N');
    struct Row {
        string at;
        string name;
        string refusal;
    };
    const Row rows[] = {
        {"13:4", "PY", ""},
        {"13:4", "p", ""},
        {"13:4", "Q", ""},
        {"12:7", long_name.substr(1), ""},
        {"13:4", "L", "model `ONE` already uses the name `L`"},
        {"13:4", "a0", "model `ONE` already uses the name `a0`"},
        {"13:4", "Z", "the host's program already uses the word `Z`, in line 35"},
        {"12:9", "W", "model `TWO` already uses the name `W`"},
        {"12:9", "goods", "the host's program already uses the word `goods`, in line 2"},
        {"13:4", "Two", "`Two` is the name of a model"},
        {"13:4", long_name, "`" + long_name + "` is longer than 65 characters"},
        {"12:9", long_name.substr(48),
         "a label with `" + long_name.substr(48) + "` would be longer than 20 characters"},
        {"13:4", "P-1",
         "`P-1` is not a name: use letters, digits and \"_\", and do not begin "
         "with a digit"},
        {"13:4", "",
         "`` is not a name: use letters, digits and \"_\", and do not begin with a "
         "digit"},
        {"13:4", "or", "`OR` is an operator of the host"},
        {"13:4", "Sum", "`SUM` is a function of the host"},
        {"13:2", "X", "`O` is a label" + labels},
        {"14:26", "X", "`VA` is the label of a nest" + labels},
        {"5:9", "X", "the name of a model cannot be renamed: its output files are named after it"},
        {"10:3", "X", "`$CONSUMERS` is a keyword"},
        {"16:13", "X", "`ABS` is a function of the host"},
        {"16:20", "X", "`GT` is an operator of the host"},
        {"18:12", "X", "an element in quotes cannot be renamed"},
        {"35:16", "X", "several models use the name `L`: rename it in a model"},
        {"7:20", "X", "this is not a name of the model"},
        {"35:1", "X", "this is not a name of the model"},
    };
    const Document document = read(two_models);
    for (const Row& row : rows) {
        const Renaming renaming = rename_at(document, offset_of(document, row.at), row.name);
        EXPECT_EQ(renaming.refusal, row.refusal) << row.at << " " << row.name;
        EXPECT_EQ(renaming.places.empty(), !row.refusal.empty()) << row.at << " " << row.name;
    }
}

TEST(Rename, ChangesAllPlacesAndNoOther) {
    const std::pair<string, string> rows[] = {
        // A set, with labels, a lead, and the host program.
        {"S(r)x \"S\" S.L %S%\n$MODEL:M\n$PROD:Y(S)  s:1  S.TL:1\n O:P(s-1)  Q:(S+\"S\"+%S%)  "
         "s.tl:\n",
         "RR(r)x \"S\" RR.L %S%\n$MODEL:M\n$PROD:Y(RR)  s:1  RR.TL:1\n O:P(RR-1)  "
         "Q:(RR+\"S\"+%S%)  RR.tl:\n"},
        // Places that already have the new name stay.
        {"$MODEL:M\n$SECTORS:\n rr  ! rr\n$PROD:RR\n O:P  Q:1\n",
         "$MODEL:M\n$SECTORS:\n RR  ! rr\n$PROD:RR\n O:P  Q:1\n"},
    };
    for (const auto& [text, expected] : rows) {
        const Document document = read(text);
        const Offset offset = static_cast<Offset>(text.find("$PROD:")) + (text[0] == 'S' ? 8 : 6);
        const Renaming renaming = rename_at(document, offset, "RR");
        EXPECT_EQ(renaming.refusal, "") << text;
        EXPECT_EQ(renamed_text(document, renaming, "RR"), expected);
    }
}

// In a model with errors, and where the new name would cause one.
TEST(Rename, KnowsWhatItCannotKeep) {
    const string head = "$MODEL:M\n$SECTORS:\n  Y  ! text\n$COMMODITIES:\n  P\n";
    const string cut = "  P" + string(248, ' ') + "Q:1\n";  // ends in column 254
    struct Row {
        string text;  // after the head
        string name;  // for Y
        string refusal;
    };
    const Row rows[] = {
        // If its uses are known, another name's error does not matter, nor does its own.
        {"$PROD:Y\n O:P(S)  Q:1\n I:P  Q:1\n", "X", ""},
        {"$PROD:Y\n O:Y  Q:1\n", "X", ""},
        {"$XY:\n P\n$PROD:Y\n O:P  Q:1\n", "X", ""},
        {"$PROD:Y\n O:P  Q:(1\n", "X", ""},
        {"$XY:\n P = y * 2\n$PROD:Y\n O:P  Q:1\n", "X",
         "`Y` is also in line 7, which cannot be read: correct that line first"},
        {"$PROD:Y\n Y P\n O:P  Q:1\n", "X",
         "`Y` is also in line 7, which cannot be read: correct that line first"},
        // Lines and statements have only this much room.
        {"$PROD:Y\n I:" + cut + "$DEMAND:H" + string(245, ' ') + "! Y\n", "XX", ""},
        {"$CONSTRAINT:U\n P =E= Y" + string(247, '*') + ";\n", "XX",
         "line 7 would be cut after column 255"},
        {"$PROD:Y\n I:P P:(Y*" + string(239, '1') + ")\n", "XX",
         "line 7 would have the error `value-field-too-long`"},
    };
    for (const Row& row : rows) {
        const Document document = read(head + row.text);
        EXPECT_EQ(rename_at(document, offset_of(document, "3:3"), row.name).refusal, row.refusal)
            << row.text;
    }
    const Document document = read(head + "$XY:\n P = y * 2\n");
    EXPECT_EQ(prepare_rename(document, offset_of(document, "7:7")).refusal,
              "this line cannot be read: correct it first");
}

}  // namespace
