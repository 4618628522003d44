" ORVEX models in ZELM source: comments, `:compiler orvex` with :make, and folds from `$MODEL:` to
" `$OFFTEXT` and of each block in it.

if exists('b:did_ftplugin')
  finish
endif
let b:did_ftplugin = 1

let s:cpo = &cpo
set cpo&vim

" A comment has its star in column 1; what follows a `!` describes the names of its line.
setlocal comments=:*
setlocal commentstring=*%s
setlocal formatoptions-=t
setlocal foldmethod=expr foldexpr=OrvexFold(v:lnum) foldlevel=9

if !exists('g:current_compiler')
  compiler orvex
endif

let b:undo_ftplugin = 'setlocal comments< commentstring< formatoptions< foldmethod< foldexpr<'
      \ . ' foldlevel< makeprg< errorformat<'
      \ . ' | unlet! b:current_compiler'

let &cpo = s:cpo
unlet s:cpo

if exists('*OrvexFold')
  finish
endif

let s:block = '^\$\%(SECTOR\|ACTIVI\|COMMOD\|MARKET\|PRICES\|CONSUM\|INCOME\|AUXILIARY\|PROD\|DEMAND'
      \ . '\|CONSTRAINT\|REPORT\)'

" The level of a line: the model is 1, each of its blocks 2. Options are one line, without a fold.
function OrvexFold(line) abort
  let text = getline(a:line)
  if text =~? '^\$MODEL:'
    return '>1'
  elseif text =~? '^\$OFFTEXT'
    return 1
  elseif getline(a:line - 1) =~? '^\$OFFTEXT'
    return 0
  endif
  return text =~? s:block ? '>2' : '='
endfunction
