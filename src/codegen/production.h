// Production and demand blocks.
//
//     $PROD:Y(S)   S:0.5
//     O:PY(S)      Q:Y0(S)
//     I:PL         Q:L0(S)    P:1
//     +            A:RA       T:TX(S)
//
// The opening record names the sector or consumer and has fields of its own. Every later record is
// an entry whose first field names an item; a record that begins with "+" continues the previous
// one. The generator file gets
//
//     LOOP((S),
//       PUT /;
//       PUT /,'$PROD:Y''.'S.TL;
//       IF ((ABS(0.5) GT ORVEPS),PUT /,'+S:'0.5;  );
//       IF(ABS(Y0(S)) GT ORVEPS,
//         PUT /,'O:PY''.'S.TL;
//         PUT /,'+Q:'Y0(S);
//       );
//       IF(ABS(L0(S)) GT ORVEPS,
//         PUT /,'I:PL';
//         PUT /,'+Q:'L0(S);
//         PUT /,'+P:'1;
//         PUT /'+','A:RA';
//         IF ((ABS(TX(S)) GT ORVEPS),PUT /,'+T:'TX(S);  );
//       );
//     );
//
// An entry's levels are closed when the next entry begins, the block's levels when the next block
// begins.
#pragma once

namespace orvex {

// Opens the block of the keyword record in `record` and translates its fields.
// Stops: those of parse, sloop, chrfld and oldrec.
void newblk();

enum class EntryEnd {
    done,        // the record is used up
    read_ahead,  // the entry had one field, and the unprocessed next record is in `record`
    input_end,   // the entry had one field, and the input ended after it
};

// Translates an entry record, after closing what the previous entry opened.
// Stops: internal-levels, and those of parse, leadlg, sloop, getfld, chrfld, numfld and oldrec.
EntryEnd newrec();

// Translates the fields left in `record`.
// Stops: those of parse, sloop, chkset, chrfld and numfld.
void oldrec();

}  // namespace orvex
