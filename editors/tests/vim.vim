" Run by scripts/editors: the Vim files on the annotated models, the examples, and lines of
" `orvex check --format short`. What is wrong goes to $FAILURES, one line each.

let s:tests = expand('<sfile>:p:h')
let s:root = fnamemodify(s:tests, ':h:h')
let s:failures = []
let v:errmsg = ''

execute 'set runtimepath^=' . escape(s:root . '/editors/vim', ' ,\')
filetype plugin on
syntax on

function s:Group(line, column) abort
  return synIDattr(synID(a:line, a:column, 1), 'name')
endfunction

" The scopes that the annotations name, and the groups that stand for them.
let s:groups = {
      \ 'comment.line.asterisk': 'Comment', 'comment.line.exclamation': 'Description',
      \ 'comment.line.ignored': 'Ignored', 'constant.numeric': 'Number',
      \ 'constant.other.option': 'OptionValue', 'entity.name.function': 'Target',
      \ 'entity.name.type.model': 'ModelName', 'entity.name.variable': 'Name ReportName',
      \ 'entity.other.attribute-name': 'Label', 'entity.other.attribute-name.nest': 'Nest',
      \ 'invalid.illegal.continuation': 'ContinuationError', 'invalid.illegal.extra': 'ExtraError',
      \ 'invalid.illegal.keyword': 'KeywordError', 'invalid.illegal.label': 'LabelError',
      \ 'invalid.illegal.string': 'ElementError', 'keyword.control.block': 'Block',
      \ 'keyword.control.model': 'ModelKeyword', 'keyword.operator.arithmetic': 'Operator',
      \ 'keyword.operator.condition': 'ConditionMark', 'keyword.operator.continuation': 'Continuation',
      \ 'keyword.operator.extra': 'ExtraMark', 'keyword.operator.lead-lag': 'Operator',
      \ 'keyword.operator.relation': 'Operator', 'keyword.operator.word': 'Operator',
      \ 'keyword.other.option': 'Option', 'punctuation.terminator.constraint': 'End',
      \ 'storage.type.declaration': 'Declaration', 'string.quoted.double': 'Element',
      \ 'support.function': 'HostFunction', 'variable.other': 'Parameter',
      \ 'variable.parameter.set': 'Set Extra'}

" Of an annotation: whether the columns are in a group that stands for its last scope (or, after
" '-', in none). Scopes without a group (`meta`, punctuation) say nothing here.
function s:CheckAnnotation(number, line, source) abort
  let mark = matchlist(a:line, '^\*\( *\)\(\^\+\|<\(-\+\)\)\s*\([^-].\{-}\)\=\%( \?- \(.*\)\)\=$')
  let from = mark[3] ==# '' ? len(mark[1]) + 1 : 0
  let width = mark[3] ==# '' ? len(mark[2]) : len(mark[3])
  let wanted = get(s:groups, substitute(get(split(mark[4]), -1, ''), '\.orvex$', '', ''), '')
  let unwanted = get(s:groups, substitute(mark[5], '\.orvex$', '', ''), '')
  for column in range(from + 1, from + width)
    let group = substitute(s:Group(a:source, column), '^orvex', '', '')
    let listed = wanted ==# '' || index(split(wanted), group) >= 0
    if !listed || index(split(unwanted), group) >= 0
      call add(s:failures, printf('%s:%d: column %d is %s', expand('%:t'), a:number, column, group))
    endif
  endfor
  let s:checked += wanted !=# '' || unwanted !=# ''
endfunction

" The annotations are taken out first, so that the models are those the grammar is tested on.
let s:checked = 0
for s:file in ['blocks', 'traps']
  silent execute 'edit!' fnameescape(s:tests . '/' . s:file . '.zlm')
  let s:annotations = []
  let s:source = 0
  for s:number in range(1, line('$'))
    let s:line = getline(s:number)
    if s:line =~# '^\* *\(\^\|<-\)'
      call add(s:annotations, [s:number, s:line, s:source])
    else
      let s:source += 1
    endif
  endfor
  silent global/^\* *\(\^\|<-\)/delete _
  for s:annotation in s:annotations
    call call('s:CheckAnnotation', s:annotation)
  endfor
  bwipeout!
endfor
if s:checked < 100
  call add(s:failures, 'only ' . s:checked . ' annotations say something')
endif

for s:file in glob(s:root . '/examples/*/*.zlm', 0, 1)
  silent execute 'edit!' fnameescape(s:file)
  if &filetype !=# 'orvex' || s:Group(search('^\$MODEL:'), 1) !=# 'orvexModelKeyword'
    call add(s:failures, s:file . ': not taken for ORVEX')
  endif
  for s:number in range(1, line('$'))
    for s:column in range(1, len(getline(s:number)))
      if s:Group(s:number, s:column) =~# 'Error'
        call add(s:failures, s:file . ':' . s:number . ':' . s:column . ' is taken for an error')
      endif
    endfor
  endfor
  bwipeout!
endfor

" Lines of an example, and how deep they are folded: host, model, block, its last line, end, host.
silent execute 'edit!' fnameescape(s:root . '/examples/closed/closed.zlm')
let s:folds = map([1, 21, 22, 44, 48, 67, 68, 69], 'foldlevel(v:val)')
if s:folds != [0, 1, 1, 2, 2, 2, 1, 0]
  call add(s:failures, 'folds: ' . string(s:folds))
endif
let s:options = [&l:commentstring, &l:makeprg]
if s:options != ['*%s', 'orvex check --format short %:S']
  call add(s:failures, 'options: ' . string(s:options))
endif
set filetype=conf
if &l:makeprg =~# 'orvex' || &l:foldmethod ==# 'expr'
  call add(s:failures, 'options stay with another file type: ' . &l:makeprg)
endif
bwipeout!

compiler! orvex
cgetexpr ['a b.zlm:7:4: error: `PX` is no set [kind-mismatch]', '2 errors',
      \ 'm.zlm:12:1: warning: the line is too long [line-too-long]']
let s:found = map(getqflist(), '[bufname(v:val.bufnr), v:val.lnum, v:val.col, v:val.type, v:val.text]')
if s:found != [['a b.zlm', 7, 4, 'e', '`PX` is no set [kind-mismatch]'],
      \ ['m.zlm', 12, 1, 'w', 'the line is too long [line-too-long]']]
  call add(s:failures, 'errorformat: ' . string(s:found))
endif

if v:errmsg !=# ''
  call add(s:failures, v:errmsg)
endif
call writefile(s:failures, $FAILURES)
execute empty(s:failures) ? 'quitall!' : 'cquit!'
