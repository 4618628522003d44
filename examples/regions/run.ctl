INP regions
SCR regions.scr
HDR regions.hdr
TIM 2:04 pm
