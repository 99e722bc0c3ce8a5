// korvant dap, judged by the published test client.
const assert = require('assert');
const path = require('path');
const { spawn } = require('child_process');
const { DebugClient } = require('@vscode/debugadapter-testsupport');

const script = name => path.join(__dirname, 'scripts', name);
const walk = script('walk.as');

/** A script of another process that waits for a debugger: where, and its exit code when it ends. */
async function listening(file) {
    const run = spawn(process.env.KORVANT, ['run', '--debug=0', file],
        { env: Object.assign({}, process.env, { KORVANT_DEBUG_TOKEN: 'open' }) });
    const port = await new Promise(found => run.stderr.on('data', text => {
        const line = /listening on 127\.0\.0\.1:(\d+)/.exec(text);
        if (line) found(Number(line[1]));
    }));
    return { port, exit: new Promise(done => run.on('exit', done)) };
}

describe('korvant dap', function () {
    this.timeout(20000);
    let dc;

    beforeEach(async () => {
        dc = new DebugClient('bash', path.join(__dirname, 'adapter.sh'), 'korvant');
        await dc.start();
    });
    afterEach(() => dc && dc.stop());

    const launch = (program, more = {}, breakpoints = [], filters = []) => Promise.all([
        dc.waitForEvent('initialized').then(async () => {
            dc.answer = await dc.setBreakpointsRequest({ source: { path: program }, breakpoints });
            await dc.setExceptionBreakpointsRequest({ filters });
            return dc.configurationDoneRequest();
        }),
        dc.launch(Object.assign({ program }, more))
    ]);
    const top = async () => (await dc.stackTraceRequest({ threadId: 1 })).body.stackFrames[0];
    const variables = async (name, frameId) => {
        const scopes = (await dc.scopesRequest({ frameId })).body.scopes;
        const scope = scopes.find(one => one.name === name);
        const list = (await dc.variablesRequest({ variablesReference: scope.variablesReference })).body.variables;
        return Object.fromEntries(list.map(one => [one.name, one]));
    };
    const fails = promise => promise.then(() => assert.fail('it was accepted'), error => error);

    it('announces what it can and refuses what it cannot', async () => {
        const able = (await dc.initializeRequest()).body;
        for (const name of ['supportsConfigurationDoneRequest', 'supportsFunctionBreakpoints',
            'supportsConditionalBreakpoints', 'supportsHitConditionalBreakpoints', 'supportsLogPoints',
            'supportsDataBreakpoints', 'supportsSetVariable', 'supportsSetExpression', 'supportsRestartRequest',
            'supportsCompletionsRequest', 'supportsExceptionInfoRequest', 'supportsCancelRequest'])
            assert.strictEqual(able[name], true, name);
        for (const name of ['supportsStepBack', 'supportsGotoTargetsRequest', 'supportsRestartFrame',
            'supportsStepInTargetsRequest', 'supportsReadMemoryRequest', 'supportsDisassembleRequest',
            'supportsModulesRequest', 'supportsSingleThreadExecutionRequests'])
            assert.ok(!able[name], name);
        await fails(dc.stackTraceRequest({ threadId: 1 }));
        await fails(dc.customRequest('stepBack', { threadId: 1 }));
    });

    it('runs to the end and tells the exit code after all output', async () => {
        const ended = Promise.all([dc.waitForEvent('exited'), dc.waitForEvent('terminated')]);
        await launch(walk);
        assert.strictEqual((await ended)[0].body.exitCode, 1);
    });

    it('moves, refuses and conditions breakpoints', async () => {
        const stopped = dc.waitForEvent('stopped');
        await launch(walk, {}, [
            { line: 24, condition: 'i == 3' }, { line: 17 }, { line: 99 }, { line: 14, logMessage: 'sum of {a} and {b}' }
        ]);
        const [one, moved, none] = dc.answer.body.breakpoints;
        assert.ok(one.verified && moved.verified && !none.verified);
        assert.ok(moved.line > 17 && none.message);
        await stopped;
        assert.ok((await top()).line >= 18);
        const next = dc.waitForEvent('stopped');
        await dc.continueRequest({ threadId: 1 });
        await next;
        const frame = await top();
        assert.strictEqual(frame.line, 24);
        assert.strictEqual((await variables('Locals', frame.id)).i.value, '3');
    });

    it('shows every kind of value and sets them', async () => {
        await Promise.all([dc.waitForEvent('stopped'), launch(walk, {}, [{ line: 26 }])]);
        const frame = await top();
        const locals = await variables('Locals', frame.id);
        assert.strictEqual(locals.kind.value, 'Gravel (7)');
        assert.strictEqual(locals.none.value, 'null');
        assert.strictEqual(locals.list.indexedVariables, 3);
        const hole = (await dc.variablesRequest({ variablesReference: locals.hole.variablesReference })).body.variables;
        const member = name => hole.find(one => one.name === name);
        assert.strictEqual(member('small').value, '-128');
        assert.strictEqual(member('big').value, '18446744073709551615');
        assert.strictEqual(member('name').value, '"say \\"a\\"\\n"');
        const globals = await variables('Globals', frame.id);
        assert.strictEqual(globals['geo::pi'].value, '3.25');
        const set = await dc.setVariableRequest(
            { variablesReference: locals.list.variablesReference, name: '[1]', value: '40 + 2' });
        assert.strictEqual(set.body.value, '42');
        const sum = await dc.evaluateRequest({ expression: 'list[1] + total', frameId: frame.id, context: 'watch' });
        assert.strictEqual(sum.body.result, '52');
        const hex = await dc.evaluateRequest(
            { expression: 'hole.small', frameId: frame.id, context: 'watch', format: { hex: true } });
        assert.strictEqual(hex.body.result, '0x80');
        await fails(dc.evaluateRequest({ expression: 'total = 1', frameId: frame.id, context: 'hover' }));
        await fails(dc.evaluateRequest({ expression: 'nowhere', frameId: frame.id, context: 'watch' }));
        await fails(dc.setVariableRequest({ variablesReference: 999999, name: 'x', value: '1' }));
        await fails(dc.scopesRequest({ frameId: 4711 }));
    });

    it('steps over, into and out', async () => {
        await Promise.all([dc.waitForEvent('stopped'), launch(walk, {}, [{ line: 24 }])]);
        const step = async request => {
            const stopped = dc.waitForEvent('stopped');
            await dc[request]({ threadId: 1 });
            await stopped;
            return top();
        };
        assert.match((await step('stepInRequest')).name, /add\(/);
        assert.match((await step('stepOutRequest')).name, /main\(/);
        assert.match((await step('nextRequest')).name, /main\(/);
    });

    it('stops at exceptions by filter and tells about them', async () => {
        await Promise.all([dc.waitForEvent('stopped'), launch(walk, {}, [], ['all'])]);
        let info = (await dc.exceptionInfoRequest({ threadId: 1 })).body;
        assert.strictEqual(info.breakMode, 'always');
        assert.strictEqual((await top()).line, 28);
        const again = dc.waitForEvent('stopped');
        await dc.continueRequest({ threadId: 1 });
        await again;
        info = (await dc.exceptionInfoRequest({ threadId: 1 })).body;
        assert.strictEqual(info.breakMode, 'unhandled');
        assert.match(info.exceptionId, /zero/);
    });

    it('stops in functions and at changes of data', async () => {
        await Promise.all([
            dc.waitForEvent('initialized').then(async () => {
                await dc.setFunctionBreakpointsRequest({ breakpoints: [{ name: 'Hole::twice' }] });
                await dc.customRequest('setDataBreakpoints', { breakpoints: [{ dataId: 'total' }] });
                return dc.configurationDoneRequest();
            }),
            dc.launch({ program: walk }),
            dc.waitForEvent('stopped').then(event => assert.strictEqual(event.body.reason, 'data breakpoint'))
        ]);
        await dc.customRequest('setDataBreakpoints', { breakpoints: [] });
        const stopped = dc.waitForEvent('stopped');
        await dc.continueRequest({ threadId: 1 });
        assert.strictEqual((await stopped).body.reason, 'function breakpoint');
        assert.match((await top()).name, /Hole::twice\(/);
    });

    it('answers Input from the debug console', async () => {
        const asked = dc.assertOutput('stdout', 'How many?');
        await launch(script('ask.as'));
        await asked;
        const said = dc.assertOutput('stdout', 'got 42');
        await dc.evaluateRequest({ expression: '42', context: 'repl' });
        await said;
    });

    it('answers Input from the launch', async () => {
        const said = dc.assertOutput('stdout', 'How many?\ngot 7');
        await launch(script('ask.as'), { answers: ['7'] });
        await said;
    });

    it('pauses an endless loop, and ends it', async () => {
        await launch(script('loop.as'));
        const stopped = dc.waitForEvent('stopped');
        const began = Date.now();
        await dc.pauseRequest({ threadId: 1 });
        assert.strictEqual((await stopped).body.reason, 'pause');
        assert.ok(Date.now() - began < 1000);
        const ended = dc.waitForEvent('terminated');
        await dc.terminateRequest({});
        await ended;
    });

    it('restarts with counts of its own', async () => {
        await Promise.all([dc.waitForEvent('stopped'),
            launch(walk, {}, [{ line: 24, hitCondition: '3' }])]);
        assert.strictEqual((await variables('Locals', (await top()).id)).i.value, '2');
        const stopped = dc.waitForEvent('stopped');
        await dc.customRequest('restart', {});
        await stopped;
        assert.strictEqual((await variables('Locals', (await top()).id)).i.value, '2');
    });

    it('attaches to a run that listens, and leaves it running', async () => {
        const { port, exit } = await listening(walk);
        await dc.initializeRequest();
        await fails(dc.attachRequest({ port, token: 'wrong' }));
        await dc.stop();
        await dc.start();
        await dc.initializeRequest();
        const ready = dc.waitForEvent('initialized');
        const attached = dc.attachRequest({ port, token: 'open' });
        await ready;
        await attached;
        await dc.setBreakpointsRequest({ source: { path: walk }, breakpoints: [{ line: 24 }] });
        const stopped = dc.waitForEvent('stopped');
        await dc.configurationDoneRequest();
        await stopped;
        assert.strictEqual((await top()).line, 24);
        await dc.stop();
        dc = null;
        assert.strictEqual(await exit, 1);
    });

    it('tells sources, places and words, and values page by page', async () => {
        await Promise.all([dc.waitForEvent('stopped'), launch(walk, {}, [{ line: 26 }])]);
        const sources = (await dc.customRequest('loadedSources')).body.sources;
        assert.deepStrictEqual(sources.map(one => one.path), [walk]);
        const places = (await dc.customRequest('breakpointLocations',
            { source: { path: walk }, line: 13, endLine: 17 })).body.breakpoints;
        assert.deepStrictEqual(places.map(one => one.line), [14, 15]);
        const frame = await top();
        const words = async text => (await dc.completionsRequest(
            { frameId: frame.id, text, column: text.length + 1 })).body.targets.map(one => one.label);
        assert.deepStrictEqual(await words('hole.tw'), ['twice']);
        assert.ok((await words('to')).includes('total'));
        const locals = await variables('Locals', frame.id);
        const page = (await dc.variablesRequest({ variablesReference: locals.list.variablesReference,
            filter: 'indexed', start: 1, count: 1, format: { hex: true } })).body.variables;
        assert.deepStrictEqual(page.map(one => one.value), ['0x00000002']);
        const whole = await dc.evaluateRequest({ expression: 'hole', frameId: frame.id, context: 'clipboard' });
        assert.match(whole.body.result, /depth = 2.*name = "say \\"a\\"\\n"/);
        const set = await dc.customRequest('setExpression',
            { expression: 'hole.depth', value: 'total + 1', frameId: frame.id });
        assert.strictEqual(set.body.value, '11');
        const stack = (await dc.stackTraceRequest({ threadId: 1, startFrame: 0, levels: 1 })).body;
        assert.strictEqual(stack.totalFrames, 1);
    });

    it('writes what log points say, and steps by statements', async () => {
        const said = dc.waitForEvent('output');
        await Promise.all([dc.waitForEvent('stopped'),
            launch(walk, {}, [{ line: 14, logMessage: '{a} and {b}', hitCondition: '== 2' }, { line: 26 }])]);
        const { output, line, source } = (await said).body;
        assert.deepStrictEqual([output, line, source.path], ['0 and 1\n', 14, walk]);
        const stopped = dc.waitForEvent('stopped');
        await dc.nextRequest({ threadId: 1, granularity: 'statement' });
        await stopped;
        assert.strictEqual((await top()).line, 27);
    });

    it('stops at the exceptions that a condition names', async () => {
        await Promise.all([
            dc.waitForEvent('initialized').then(async () => {
                await dc.setExceptionBreakpointsRequest(
                    { filters: [], filterOptions: [{ filterId: 'unhandled', condition: 'zero == 0' }] });
                return dc.configurationDoneRequest();
            }),
            dc.launch({ program: walk }),
            dc.waitForEvent('stopped')
        ]);
        assert.strictEqual((await top()).line, 34);
    });

    it('ends an evaluation that is cancelled', async () => {
        const endless = script('loop.as');
        await Promise.all([dc.waitForEvent('stopped'), launch(endless, {}, [{ line: 5 }])]);
        const frameId = (await top()).id;
        const refused = fails(dc.evaluateRequest({ expression: 'main()', frameId, context: 'repl' }));
        // Requests are numbered in their order.
        await dc.customRequest('cancel', { requestId: dc.sequence - 1 });
        await refused;
        assert.strictEqual((await variables('Locals', frameId)).i.value, '0');
    });

    it('ends the other process when that is asked for', async () => {
        const { port, exit } = await listening(script('loop.as'));
        await dc.initializeRequest();
        const ready = dc.waitForEvent('initialized');
        const attached = dc.attachRequest({ port, token: 'open' });
        await ready;
        await attached;
        await dc.configurationDoneRequest();
        await dc.disconnectRequest({ terminateDebuggee: true });
        await exit;
        dc = null;
    });

    it('lets the client\'s terminal run the script', async () => {
        const terminal = new Promise(done => {
            const dispatch = dc.dispatch.bind(dc);
            dc.dispatch = body => {
                const message = JSON.parse(body);
                if (message.type !== 'request') return dispatch(body);
                const [program, ...args] = message.arguments.args;
                const child = spawn(program, args,
                    { env: Object.assign({}, process.env, message.arguments.env), stdio: 'ignore' });
                child.on('exit', done);
            };
        });
        await dc.initializeRequest({ adapterID: 'korvant', supportsRunInTerminalRequest: true });
        const ready = dc.waitForEvent('initialized');
        const launched = dc.launchRequest({ program: walk, console: 'integratedTerminal' });
        await ready;
        await launched;
        await dc.setBreakpointsRequest({ source: { path: walk }, breakpoints: [{ line: 26 }] });
        const stopped = dc.waitForEvent('stopped');
        await dc.configurationDoneRequest();
        await stopped;
        assert.strictEqual((await variables('Globals', (await top()).id)).total.value, '10');
        const ended = dc.waitForEvent('exited');
        await dc.continueRequest({ threadId: 1 });
        assert.strictEqual((await ended).body.exitCode, await terminal);
    });
});
