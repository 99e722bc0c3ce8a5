exec node "$(dirname "$0")/record.js" dap
