#!/usr/bin/env bash
# run.sh KORVANT: published clients try korvant dap and korvant lsp. What is not on this machine is
# said and left out: node with the registry of its packages, Neovim, Emacs with eglot.
set -euo pipefail
KORVANT=$(realpath "$1")
here=$(cd "$(dirname "$0")" && pwd)
root=$(cd "$here/../../.." && pwd)
export KORVANT
work=$(dirname "$KORVANT")/../protocol-clients
mkdir -p "$work"
cp -r "$here"/. "$work"
cd "$work"

with_node() {
    if ! command -v npm >/dev/null; then
        echo "protocol clients: no npm here; the debugging client is left out"
        return 0
    fi
    timeout 180 npm install --silent --no-audit --no-fund >npm.log 2>&1 || {
        echo "protocol clients: npm cannot install them; the debugging client is left out"
        return 0
    }
    export KORVANT_TRAFFIC=$work/traffic.jsonl
    rm -f "$KORVANT_TRAFFIC"
    timeout 300 npx mocha --exit dap.test.js lsp.test.js
    KORVANT_EXTENSION=$root/editors/vscode timeout 60 npx mocha --exit extension.test.js
    timeout 60 npx vscode-tmgrammar-test \
        -g "$root/editors/vscode/syntaxes/angelscript.tmLanguage.json" grammar/words.test.as
    node check_traffic.js "$KORVANT_TRAFFIC" traffic.ts
    npx tsc --strict --noEmit --skipLibCheck --moduleResolution node --target es2020 traffic.ts
}

with_genhtml() {
    if ! command -v genhtml >/dev/null; then
        echo "protocol clients: no genhtml here; the pages of a coverage are left out"
        return 0
    fi
    "$KORVANT" run --coverage=run.info scripts/walk.as >run.log 2>&1 || test $? = 1
    timeout 60 genhtml --quiet --output-directory coverage run.info
    grep -rq 'Hole::twice' coverage
}

with_neovim() {
    if ! command -v nvim >/dev/null; then
        echo "protocol clients: no nvim here; the language client is left out"
        return 0
    fi
    export KORVANT_SCRIPTS=$work/scripts KORVANT_PLACES=$root/tests/protocol/lsp/places
    KORVANT_FILES=$(find "$root"/examples "$root"/tests "$root"/fuzz -name "*.as" | sort)
    export KORVANT_FILES
    timeout 240 nvim --headless -u NONE -i NONE -n -c "luafile lsp.lua"
}

with_emacs() {
    if ! emacs --batch --eval '(progn (package-initialize) (require (quote eglot)))' 2>/dev/null; then
        echo "protocol clients: no emacs with eglot here; it is left out"
        return 0
    fi
    KORVANT_EMACS=$root/editors/emacs timeout 100 emacs --batch -l lsp.el
}

with_node
with_genhtml
with_neovim
with_emacs
