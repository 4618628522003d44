# Completion of orvex for fish: put it into ~/.config/fish/completions.

set -l commands translate check fmt info graph expand balance explain lsp codes

function __orvex_codes
    orvex codes 2>/dev/null | string replace -r ' .*' ''
end

# Of the warnings that --warn takes: one of the symbol listing is not among the findings.
function __orvex_levels
    printf '%s\n' off note warning error
    for code in (orvex codes 2>/dev/null | string match -v 'listing-*' | string replace -rf '^([a-z-]+) +(?:warning|note|off) .*' '$1')
        printf "$code=%s\n" off note warning error
    end
end

complete -c orvex -f
complete -c orvex -s h -l help -d 'Show help'
complete -c orvex -n "not __fish_seen_subcommand_from $commands" -l version -d 'Show the version'

complete -c orvex -n "not __fish_seen_subcommand_from $commands" -a translate -d 'Write generator and header files'
complete -c orvex -n "not __fish_seen_subcommand_from $commands" -a check -d 'Show all errors and warnings'
complete -c orvex -n "not __fish_seen_subcommand_from $commands" -a fmt -d 'Lay out models'
complete -c orvex -n "not __fish_seen_subcommand_from $commands" -a info -d 'List the names of each model'
complete -c orvex -n "not __fish_seen_subcommand_from $commands" -a graph -d 'Draw each model'
complete -c orvex -n "not __fish_seen_subcommand_from $commands" -a expand -d 'Print each model as the solver reads it'
complete -c orvex -n "not __fish_seen_subcommand_from $commands" -a balance -d 'Show accounts, and what does not balance'
complete -c orvex -n "not __fish_seen_subcommand_from $commands" -a explain -d 'Explain a message'
complete -c orvex -n "not __fish_seen_subcommand_from $commands" -a lsp -d 'Serve an editor'
complete -c orvex -n "not __fish_seen_subcommand_from $commands" -a codes -d 'List the codes of all messages'

set -l with_files '__fish_seen_subcommand_from translate check fmt info graph expand balance'
set -l with_models '__fish_seen_subcommand_from translate check info graph expand balance'
complete -c orvex -n $with_files -F
complete -c orvex -n $with_models -l model -x -d 'Only the model with this name'
complete -c orvex -n $with_files -l report -x -a 'text= short= json= sarif= github= junit=' -d 'Also write the findings to a file'
complete -c orvex -n $with_files -l max-errors -x -d 'Show at most N errors per file'
complete -c orvex -n $with_files -l stdin-filename -x -d 'Name of standard input'
complete -c orvex -n $with_models -l translator -r -F -d 'The orvexpp to run'
complete -c orvex -n $with_files -s q -l quiet -d 'No summary and no progress'
complete -c orvex -n '__fish_seen_subcommand_from translate check fmt info graph expand balance explain' -l color -x -a 'auto always never' -d 'Colours'

set -l with_formats '__fish_seen_subcommand_from translate check fmt info expand'
complete -c orvex -n $with_formats -l format -x -a 'text short json sarif github junit' -d 'Form of the findings'

set -l with_runs '__fish_seen_subcommand_from translate check lsp'
complete -c orvex -n '__fish_seen_subcommand_from translate check expand balance lsp' -l warn -x -a '(__orvex_levels)' -d 'Level of warnings'
complete -c orvex -n '__fish_seen_subcommand_from translate check expand balance' -l error-on-warnings -d 'Count warnings as errors'
complete -c orvex -n '__fish_seen_subcommand_from translate check fmt' -s j -l jobs -x -d 'Work on N files at once'
complete -c orvex -n $with_runs -l first-model -x -d 'Number models from N + 1'
complete -c orvex -n $with_runs -l first-constraint -x -d 'Number constraints from N + 1'
complete -c orvex -n $with_runs -l time -x -d 'Time stamp of the host'
complete -c orvex -n $with_runs -l put-file -r -F -d 'Path in the FILE statement of the host'

complete -c orvex -n '__fish_seen_subcommand_from check' -l fix -d 'Make safe corrections'
complete -c orvex -n '__fish_seen_subcommand_from check' -l unsafe-fixes -d 'Also make corrections that may be wrong'
complete -c orvex -n '__fish_seen_subcommand_from check fmt' -l diff -d 'Print what would change as a diff'
complete -c orvex -n '__fish_seen_subcommand_from fmt' -l check -d 'Show which files would change'
complete -c orvex -n '__fish_seen_subcommand_from check' -l add-allow -d 'Write comments that allow the warnings'

complete -c orvex -n '__fish_seen_subcommand_from translate' -s o -l out -x -a '(__fish_complete_directories)' -d 'Folder for the outputs'
complete -c orvex -n '__fish_seen_subcommand_from translate' -l header -r -F -d 'Path of the header file'
complete -c orvex -n '__fish_seen_subcommand_from translate' -l depfile -r -F -d 'Write what the outputs depend on'

complete -c orvex -n '__fish_seen_subcommand_from check' -l statistics -d 'Count the findings of each code'
complete -c orvex -n '__fish_seen_subcommand_from check' -l exit-zero -d 'Exit with status 0 despite findings'

complete -c orvex -n '__fish_seen_subcommand_from expand balance' -l data -r -F -d 'Data of the model'
complete -c orvex -n '__fish_seen_subcommand_from expand' -l summary -d 'Show how large each block becomes'
complete -c orvex -n '__fish_seen_subcommand_from expand' -l set -x -d 'Number of elements of a set'
complete -c orvex -n '__fish_seen_subcommand_from balance' -l format -x -a 'text json csv sam' -d 'Form of the accounts'
complete -c orvex -n '__fish_seen_subcommand_from balance' -l tolerance -x -d 'Difference allowed, as a share of the larger side'
complete -c orvex -n '__fish_seen_subcommand_from balance' -l against -r -F -d 'Table of accounts to compare with'
complete -c orvex -n '__fish_seen_subcommand_from graph' -l format -x -a 'dot svg mermaid json table' -d 'Form of the picture'
complete -c orvex -n '__fish_seen_subcommand_from graph' -l focus -x -d 'Only what is connected to this name'
complete -c orvex -n '__fish_seen_subcommand_from graph' -l depth -x -d 'With --focus: at most N steps away'

complete -c orvex -n '__fish_seen_subcommand_from lsp' -F
complete -c orvex -n '__fish_seen_subcommand_from lsp' -l translator -r -F -d 'The orvexpp to run'
complete -c orvex -n '__fish_seen_subcommand_from lsp' -l check -d 'Test the server on files'
complete -c orvex -n '__fish_seen_subcommand_from lsp' -l log -r -F -d 'Write the log to a file'

complete -c orvex -n '__fish_seen_subcommand_from explain' -a '(__orvex_codes)'
