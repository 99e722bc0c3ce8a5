// Starts the program korvant as debug adapter and as language server.
const vscode = require('vscode');
const { LanguageClient } = require('vscode-languageclient/node');

let client;

function program() {
    return vscode.workspace.getConfiguration('korvant').get('path') || 'korvant';
}

// Without a launch.json the script that is shown is run.
function completed(folder, config) {
    const editor = vscode.window.activeTextEditor;
    if (!config.type && !config.request && !config.name) {
        if (!editor || editor.document.languageId !== 'angelscript') return config;
        return { type: 'korvant', request: 'launch', name: 'Run this script', program: '${file}' };
    }
    return config;
}

function activate(context) {
    context.subscriptions.push(vscode.debug.registerDebugConfigurationProvider('korvant', {
        resolveDebugConfiguration: completed
    }));
    context.subscriptions.push(vscode.debug.registerDebugAdapterDescriptorFactory('korvant', {
        createDebugAdapterDescriptor: () => new vscode.DebugAdapterExecutable(program(), ['dap'])
    }));
    const api = vscode.workspace.getConfiguration('korvant').get('api');
    const args = api ? ['lsp', '--api', api] : ['lsp'];
    client = new LanguageClient('korvant', 'KorvantIDE', { command: program(), args },
        { documentSelector: [{ language: 'angelscript' }] });
    context.subscriptions.push(client);
    return client.start();
}

function deactivate() {
    return client && client.stop();
}

module.exports = { activate, deactivate };
