" :compiler orvex, then :make checks the file that is open and lists what was found.

if exists('current_compiler')
  finish
endif
let current_compiler = 'orvex'

CompilerSet makeprg=orvex\ check\ --format\ short\ %:S
CompilerSet errorformat=%f:%l:%v:\ %trror:\ %m,%f:%l:%v:\ %tarning:\ %m,%-G%.%#
