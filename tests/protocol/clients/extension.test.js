// The extension for VS Code against a stand-in for the editor: what it starts, and with what.
const assert = require('assert');
const Module = require('module');
const path = require('path');

const started = [];
const settings = { path: '/opt/korvant', api: '' };
const registered = {};
const vscode = {
    workspace: { getConfiguration: () => ({ get: (name) => settings[name] }) },
    window: { activeTextEditor: { document: { languageId: 'angelscript' } } },
    DebugAdapterExecutable: class { constructor(command, args) { Object.assign(this, { command, args }); } },
    debug: {
        registerDebugAdapterDescriptorFactory: (type, factory) => { registered.factory = factory; return {}; },
        registerDebugConfigurationProvider: (type, provider) => { registered.provider = provider; return {}; }
    }
};
class LanguageClient {
    constructor(id, name, server, options) { started.push({ server, options }); }
    start() { return Promise.resolve(); }
    stop() { return Promise.resolve(); }
}

const load = Module._load;
Module._load = function (name, ...rest) {
    if (name === 'vscode') return vscode;
    if (name === 'vscode-languageclient/node') return { LanguageClient };
    return load.call(this, name, ...rest);
};
const extension = require(path.join(process.env.KORVANT_EXTENSION, 'extension.js'));

describe('the extension', () => {
    it('starts both servers with what is set', async () => {
        await extension.activate({ subscriptions: [] });
        settings.api = '/host.json';
        await extension.activate({ subscriptions: [] });
        assert.deepStrictEqual(started.map((one) => one.server),
            [{ command: '/opt/korvant', args: ['lsp'] },
             { command: '/opt/korvant', args: ['lsp', '--api', '/host.json'] }]);
        const adapter = registered.factory.createDebugAdapterDescriptor();
        assert.deepStrictEqual([adapter.command, adapter.args], ['/opt/korvant', ['dap']]);
        await extension.deactivate();
    });

    it('runs the script that is shown where nothing is set up', () => {
        const resolve = registered.provider.resolveDebugConfiguration;
        assert.strictEqual(resolve(undefined, {}).program, '${file}');
        const own = { type: 'korvant', request: 'attach', name: 'host', port: 1, token: 't' };
        assert.strictEqual(resolve(undefined, own), own);
        vscode.window.activeTextEditor = undefined;
        assert.deepStrictEqual(resolve(undefined, {}), {});
    });

    it('says in its manifest what it has', () => {
        const manifest = require(path.join(process.env.KORVANT_EXTENSION, 'package.json'));
        const fs = require('fs');
        const files = [manifest.main, manifest.contributes.languages[0].configuration,
                       manifest.contributes.grammars[0].path];
        for (const file of files)
            assert.ok(fs.existsSync(path.join(process.env.KORVANT_EXTENSION, file)), file);
        assert.strictEqual(manifest.contributes.languages[0].id, manifest.contributes.grammars[0].language);
        assert.strictEqual(manifest.contributes.debuggers[0].type, 'korvant');
    });
});
