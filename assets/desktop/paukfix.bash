# SPDX-License-Identifier: MIT
# SPDX-FileCopyrightText: 2026 The Paukfix developers
#
# Completion of "paukfix" for bash: options, and the files that can be opened.
_paukfix()
{
    local cur prev words cword
    _init_completion || return
    if [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W '-w --weiter -h --help -v --version --' -- "$cur")
    else
        _filedir '@(pzb|pzbz|apkg|colpkg|kvtml)'
    fi
}
complete -F _paukfix paukfix
