INP dynamic.zlm
SCR dynamic.scr
SCD ./
MDL dynamic
