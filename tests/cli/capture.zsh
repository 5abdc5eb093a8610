# Prints what zsh offers for a line of the command: capture.zsh FOLDER LINE. FOLDER has
# functions/_varnix. zsh completes only at a terminal, so it gets one.
zmodload zsh/zpty
zpty shell zsh -f -i
line() { zpty -w shell "$1" }
line 'PROMPT= RPROMPT='
line "fpath=($1/functions \$fpath); autoload -U compinit; compinit -u -d $1/dump"
# Each offer is printed on a line of its own, between marks.
line 'compadd() { if [[ ${@[1,(i)(-|--)]} == *-(O|A|D)\ * ]]; then builtin compadd "$@"; return; fi
  local -a hits; builtin compadd -A hits "$@"; builtin compadd "$@"; print -l "<<"${^hits}">>" }'
line 'done-line() { print "<<END>>"; zle kill-whole-line }; zle -N done-line; bindkey "^X" done-line; unsetopt beep; setopt rcexpandparam'
line 'print "<<""READY>>"'
zpty -r shell seen '*<<READY>>*'
zpty -w -n shell "$2"$'\t\x18'
zpty -r shell seen '*<<END>>*'
print -r -- "$seen" | grep -o '<<[^<>]*>>' | tr -d '<>' | grep -v END
