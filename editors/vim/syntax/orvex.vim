" ORVEX models in ZELM source. What stands around the models is left plain but for comments.

if exists('b:current_syntax')
  finish
endif
let b:current_syntax = 'orvex'

let s:cpo = &cpo
set cpo&vim

syntax case ignore
syntax sync fromstart

" Of two items that match at one place Vim takes the later one here.

" Values.
syntax cluster orvexExpression contains=orvexParameter,orvexOperator,orvexHostFunction,orvexNumber,
      \orvexElement,orvexElementError
syntax match orvexOperator /[-+*\/<>]\|=[EGL]=\|=/ contained
syntax match orvexConditionMark /\$/ contained
syntax match orvexSet /[^[:blank:](),"+!:-]\+/ contained
syntax match orvexNumber /\%(\d\+\.\=\d*\|\.\d\+\)\%(E[-+]\=\d\+\)\=/ contained
syntax match orvexParameter /\h[^[:blank:]()$#!:;,.+*\/<>="-]*/ contained nextgroup=orvexArguments
syntax match orvexHostFunction /\<\%(ABS\|CARD\|ORD\|SUM\)\ze\s*(/ contained
syntax match orvexOperator /\<\%(AND\|OR\|XOR\|NOT\|GT\|GE\|LT\|LE\|EQ\|NE\)\>/ contained
syntax match orvexElementError /""\=/ contained
syntax match orvexElement /"[^"!]\+"/ contained
syntax match orvexArguments contained
      \ /\s*(\%([^()!:[:blank:]]\|\s\+\%([^[:blank:]:!]\+\s\=:\)\@!\)*)\=/
      \ contains=orvexSet,orvexOperator,orvexNumber,orvexElement,orvexElementError

" Records of fields. A value ends at the next label, also inside parentheses.
syntax cluster orvexRecord contains=orvexDescription,orvexContinuation,orvexCondition,orvexExtra,
      \orvexExtraError,orvexNest,orvexLabel,orvexLabelError,@orvexExpression
syntax match orvexContinuation /^+\ze\%(\s\|$\)/ contained
syntax region orvexCondition contained oneline keepend matchgroup=orvexConditionMark start=/\$/
      \ end=/$\|\ze!\|\ze\s\+[^[:blank:]:!]\+\s\=:/ contains=@orvexExpression
syntax match orvexExtraMark /#/ contained
syntax match orvexExtraError /#/ contained
syntax match orvexExtra /#[^(!:]*([^)!]*)\=/ contained
      \ contains=orvexElement,orvexElementError,orvexExtraMark
syntax match orvexNest /[^[:blank:]:!]\+\ze\s\=:/ contained
syntax match orvexLabel /\%(PROD\|DEMAND\|[OIDEQPSTANRKVWZ]\)\ze\s\=:/ contained
syntax match orvexLabelError /\%(^+\|\s\@1<=\$\)[^[:blank:]:!]\+\ze\s\=:/ contained

" What stands in front of the fields, and what belongs to other blocks.
syntax match orvexTarget contained nextgroup=orvexArguments
      \ /\%(^\$\%(PROD\|DEMAND\|CONSTRAINT\)\s*:\s*\)\@30<=[^[:blank:]($#:!]\+\%(\s\=:\)\@!/
syntax match orvexReportName contained nextgroup=orvexArguments
      \ /\%(\<V\s\=:\s*\)\@9<=[^[:blank:]()$#:!]\+\%(\s\=:\)\@!/
syntax match orvexName /[^[:blank:]()$!]\+/ contained nextgroup=orvexArguments
syntax region orvexEntryCondition contained oneline matchgroup=orvexConditionMark start=/\$/
      \ end=/$\|\ze[[:blank:]!]/ contains=@orvexExpression,orvexParentheses
syntax region orvexParentheses contained oneline transparent start=/(/ end=/)\|$\|\ze!/
      \ contains=@orvexExpression,orvexParentheses
syntax match orvexContinuationError /^+/ contained
syntax match orvexOptionValue /:\@1<=[^!]*/ contained
syntax match orvexIgnored /\%(^\$[^:!]\{1,11}:\)\@13<=[^!]*/ contained
syntax match orvexIgnored /\%(^\$OFFTEXT\)\@8<=.*/
syntax match orvexModelName /\%(^\$MODEL:\)\@7<=.*/ contained
syntax match orvexDescription /!.*/ contained
syntax match orvexComment /^\*.*/

" Keywords. A block ends in front of the next keyword, a constraint with the record that holds its
" semicolon. The first six letters tell a declaration; a keyword is at most eleven letters long.
syntax match orvexKeywordError /^\$[^[:blank:]:!]*/ contained
syntax match orvexOption contained contains=orvexOptionValue
      \ /^\$\%(PEPS\|EULCHK\|WALCHK\|DATECH\|FUNLOG\|DIAGNL\|ECHOP\)\s*:[^!]*/
syntax region orvexDeclarations contained matchgroup=orvexDeclaration
      \ start=/^\$\%(SECTOR\|ACTIVI\|COMMOD\|MARKET\|PRICES\|CONSUM\|INCOME\)[^:!]\{0,5}:/
      \ start=/^\$AUXILIARY\s\{0,2}:/ end=/^\$/me=s-1
      \ contains=orvexComment,orvexIgnored,orvexDescription,orvexContinuationError,orvexName,
      \orvexEntryCondition
syntax region orvexFunction contained matchgroup=orvexBlock start=/^\$\%(PROD\|DEMAND\)\s*:/
      \ end=/^\$/me=s-1 contains=orvexComment,orvexTarget,@orvexRecord
syntax region orvexConstraint contained matchgroup=orvexBlock start=/^\$CONSTRAINT\s\=:/
      \ matchgroup=orvexEnd end=/\%(^\$CONSTRAINT.*\)\@<!;[^!]*/
      \ matchgroup=NONE end=/^\$[^;!]*\%(!.*\)\=$/me=s-1
      \ contains=orvexComment,orvexDescription,orvexTarget,orvexConditionMark,@orvexExpression
syntax region orvexReport contained matchgroup=orvexBlock start=/^\$REPORT\s*:/ end=/^\$/me=s-1
      \ contains=orvexComment,orvexIgnored,orvexContinuationError,orvexReportName,@orvexRecord
syntax region orvexModel matchgroup=orvexModelKeyword start=/^\$MODEL:/ end=/^\$OFFTEXT/
      \ contains=orvexModelName,orvexComment,orvexKeywordError,orvexOption,orvexDeclarations,
      \orvexFunction,orvexConstraint,orvexReport,@orvexRecord

highlight default link orvexComment Comment
highlight default link orvexDescription SpecialComment
highlight default link orvexIgnored Comment
highlight default link orvexModelKeyword PreProc
highlight default link orvexModelName Title
highlight default link orvexKeywordError Error
highlight default link orvexOption PreProc
highlight default link orvexOptionValue Constant
highlight default link orvexDeclaration StorageClass
highlight default link orvexName Identifier
highlight default link orvexReportName Identifier
highlight default link orvexBlock Statement
highlight default link orvexEnd Statement
highlight default link orvexTarget Function
highlight default link orvexLabel Label
highlight default link orvexLabelError Error
highlight default link orvexNest Special
highlight default link orvexContinuation Operator
highlight default link orvexContinuationError Error
highlight default link orvexConditionMark Conditional
highlight default link orvexExtraMark Operator
highlight default link orvexExtraError Error
highlight default link orvexHostFunction Function
highlight default link orvexOperator Operator
highlight default link orvexNumber Number
highlight default link orvexElement String
highlight default link orvexElementError Error
highlight default link orvexSet Type

let &cpo = s:cpo
unlet s:cpo
