INP taxes.zlm
SCR taxes.scr
NMO 1
NCO 1
TIM 13:05:22
