INP closed.zlm
SCR closed.scr
