# Completes the one argument of orvexpp: a control file, or audit.
complete -c orvexpp -n 'not __fish_is_first_arg' -f
complete -c orvexpp -n __fish_is_first_arg -a audit -d 'Print a line about the companion library'
