INP three.zlm
SCR three.scr
ERR three.err
