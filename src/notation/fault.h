// What can be wrong with a model: one value for each message with which the translator stops. The
// text of a message is in the routine that stops with it; docs/messages.md explains each one under
// a code, which is the name of the value.
#pragma once

#include <cstdint>

namespace orvex::notation {

enum class Fault : std::uint8_t {
    none,
    keyword_colon,
    keyword_order,
    keyword_unknown,
    getfld_blank,
    getfld_label,
    freefd_end,
    extarg_left,
    extarg_right,
    extarg_many,
    extarg_close,
    extarg_invalid,
    rdarg_parentheses,
    rdarg_many,
    rdarg_close,
    rdarg_seven,
    rdarg_invalid,
    rdcond_close,
    chkcnd_parentheses,
    chrfld_long,
    numfld_long,
    addsym_type,
    addsym_dimension,
    addsym_undeclared,
    addsym_length,
    addsym_full,
    chksym_unknown,
    chksym_type,
    sloop_length,
    sloop_full,
    leadlg_both,
    leadlg_inactive,
    chkset_inactive,
    conblk_colon,
    repblk_continuation,
    repblk_first,
    repblk_single,
    repblk_condition,
    repblk_second,
    repblk_third,
    repblk_extra,
};

}  // namespace orvex::notation
