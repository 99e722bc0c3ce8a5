// check_traffic.js TRAFFIC OUT: the recorded messages as a TypeScript file that only compiles when
// each has the shape that the published types give it.
const fs = require('fs');

const upper = text => text[0].toUpperCase() + text.slice(1);
const seen = new Set();
const lines = ["import { DebugProtocol } from '@vscode/debugprotocol';"];
for (const text of fs.readFileSync(process.argv[2], 'utf8').split('\n').filter(Boolean)) {
    const message = JSON.parse(text);
    const name = message.type === 'event' ? message.event : message.command;
    let type = upper(name) + (message.type === 'event' ? 'Event' : upper(message.type));
    if (message.type === 'response' && !message.success) type = 'ErrorResponse';
    const key = type + text.length;
    if (seen.has(key)) continue;
    seen.add(key);
    lines.push(`export const m${lines.length}: DebugProtocol.${type} = ${text};`);
}
fs.writeFileSync(process.argv[3], lines.join('\n') + '\n');
console.log(`${lines.length - 1} messages to be checked`);
