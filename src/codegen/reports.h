// Report blocks: extra result values, one report variable per record.
//
//     $REPORT:
//     V:RY(S)   O:PY(S)   PROD:Y(S)
//
// The first field names the variable, the second what is reported (a commodity or a consumer), and
// the third, which is optional, the sector or consumer concerned. The generator file gets
//
//     IF (ORVREPORT,
//     PUT / '$REPORT:'/;
//     LOOP((S),
//       PUT /,'V:RY''.'S.TL;
//       PUT '        ';
//       PUT'O:PY''.'S.TL;
//       PUT '        ';
//       PUT'PROD:Y''.'S.TL;
//     );
//
//     );
//
// The header file's variable list gets the line "RY(S)", and the artificial equation
//
//     +SUM((S)$(ORVREPORT),RY(S))
#pragma once

namespace orvex {

// Translates the records of the report block up to the next one that begins with "$". Returns 0
// with that record in `record`, or 1 at the end of the input.
// Stops: report-continued, report-name-missing, report-item-missing, report-condition,
// report-item-invalid, report-block-invalid, report-field-extra, and those of parse, sloop, chkset
// and chrfld.
int repblk();

}  // namespace orvex
