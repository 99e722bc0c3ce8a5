#!/usr/bin/env bash
# check_exports.sh MODULE: the module exports exactly what hosts are promised.
set -euo pipefail
promised="CompileScript ConfigureScriptEngine ContinueApplication CountBuildMessages
FeedScriptInput GetBuildMessage GetLastRunResult GetRunFrame GetScriptLimits GetStrictScriptLimits GetUnwrittenFile
GetEditedFile ReleaseScriptEngine RequestScriptStop RunApplication RunScript RunScriptEditor
SetEditedFile SetEditorLayout SetScriptCallbacks SetScriptLimits ShowScriptBox ExportScriptApi
StartScriptDebugServer StopScriptDebugServer TellScriptDebugExit"
names=$(nm -D --defined-only "$1" | cut -d' ' -f3-)

functions=$(grep -v '^_Z' <<<"$names" | sort)
if ! diff <(tr ' ' '\n' <<<"$promised" | sort) - <<<"$functions"; then
    echo "check_exports: the plain names differ (< promised, > exported)" >&2
    exit 1
fi

readable=$(grep '^_Z' <<<"$names" | c++filt)
classes='ScriptObject|ScriptArray|CThread|CThreadEvent'
if grep -vE "^((vtable|typeinfo|typeinfo name) for )?($classes)(::|\$)" <<<"$readable"; then
    echo "check_exports: exported by mistake" >&2
    exit 1
fi
for needed in 'ScriptObject::ScriptObject()' 'ScriptObject::m_locale' 'ScriptObject::m_before' \
    'ScriptObject::m_after' 'ScriptObject::BU_OK' 'CThread::Start()' 'vtable for ScriptObject'; do
    if ! grep -qxF "$needed" <<<"$readable"; then
        echo "check_exports: $needed is missing" >&2
        exit 1
    fi
done
