autocmd BufRead,BufNewFile *.zlm setfiletype orvex
