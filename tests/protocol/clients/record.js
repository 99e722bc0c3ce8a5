// Runs the program KORVANT with the given arguments and keeps a copy of what it sends in the file
// KORVANT_TRAFFIC, a JSON message a line.
const { spawn } = require('child_process');
const fs = require('fs');

const child = spawn(process.env.KORVANT, process.argv.slice(2), { stdio: ['pipe', 'pipe', 'inherit'] });
process.stdin.pipe(child.stdin);
let pending = Buffer.alloc(0);
child.stdout.on('data', bytes => {
    process.stdout.write(bytes);
    pending = Buffer.concat([pending, bytes]);
    for (;;) {
        const head = pending.indexOf('\r\n\r\n');
        if (head < 0) return;
        const length = Number(/Content-Length: (\d+)/i.exec(pending.subarray(0, head))[1]);
        if (pending.length < head + 4 + length) return;
        fs.appendFileSync(process.env.KORVANT_TRAFFIC, pending.subarray(head + 4, head + 4 + length) + '\n');
        pending = pending.subarray(head + 4 + length);
    }
});
child.on('exit', code => process.exit(code === null ? 70 : code));
