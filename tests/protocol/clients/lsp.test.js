// korvant lsp, judged by a client of its own on node: colours, folds, hints, and that edits by
// ranges come to the same as whole texts.
const { spawn } = require('child_process');
const assert = require('assert');
const fs = require('fs');
const path = require('path');

class Client {
  constructor() {
    this.process = spawn(process.env.KORVANT, ['lsp'], { stdio: ['pipe', 'pipe', 'inherit'] });
    this.waiting = new Map();
    this.pending = Buffer.alloc(0);
    this.id = 0;
    this.process.stdout.on('data', (bytes) => this.take(bytes));
  }
  take(bytes) {
    this.pending = Buffer.concat([this.pending, bytes]);
    for (;;) {
      const end = this.pending.indexOf('\r\n\r\n');
      if (end < 0) return;
      const length = Number(/Content-Length: (\d+)/i.exec(this.pending.toString('latin1', 0, end))[1]);
      if (this.pending.length < end + 4 + length) return;
      const message = JSON.parse(this.pending.toString('utf8', end + 4, end + 4 + length));
      this.pending = this.pending.subarray(end + 4 + length);
      if (this.waiting.has(message.id)) this.waiting.get(message.id)(message);
    }
  }
  send(message) {
    const body = Buffer.from(JSON.stringify({ jsonrpc: '2.0', ...message }));
    this.process.stdin.write(`Content-Length: ${body.length}\r\n\r\n`);
    this.process.stdin.write(body);
  }
  tell(method, params) { this.send({ method, params }); }
  async ask(method, params) {
    const id = ++this.id;
    const answer = new Promise((resolve) => this.waiting.set(id, resolve));
    this.send({ id, method, params });
    const message = await answer;
    this.waiting.delete(id);
    assert(!message.error, `${method}: ${JSON.stringify(message.error)}`);
    return message.result;
  }
  async begin() {
    const { capabilities } = await this.ask('initialize', { capabilities: {} });
    this.legend = capabilities.semanticTokensProvider.legend;
    this.tell('initialized', {});
  }
  open(uri, text, version = 1) {
    this.tell('textDocument/didOpen',
      { textDocument: { uri, languageId: 'angelscript', version, text } });
  }
  async end() {
    await this.ask('shutdown', null);
    this.tell('exit', null);
    return new Promise((resolve) => this.process.on('exit', resolve));
  }
}

const uri = 'file:///edited.as';
const textDocument = { uri };

/** "word:type:modifiers" of each coloured name. */
function colours(client, text, { data }) {
  const lines = text.split('\n');
  const found = [];
  let line = 0, column = 0;
  for (let i = 0; i < data.length; i += 5) {
    column = data[i] === 0 ? column + data[i + 1] : data[i + 1];
    line += data[i];
    const word = lines[line].substring(column, column + data[i + 2]);
    const modifiers = client.legend.tokenModifiers.filter((_, bit) => data[i + 4] & (1 << bit));
    found.push([word, client.legend.tokenTypes[data[i + 3]], ...modifiers].join(':'));
  }
  return found;
}

/** The place of an offset in UTF-16 units, as both sides count them. */
function positionOf(text, offset) {
  const before = text.substring(0, offset).split('\n');
  return { line: before.length - 1, character: before[before.length - 1].length };
}

/** No place between the halves of a character or of a line end, where no editor's caret is. */
function placeNear(text, offset) {
  const code = text.charCodeAt(offset);
  if (code >= 0xdc00 && code < 0xe000) return offset - 1;
  return text[offset] === '\n' && text[offset - 1] === '\r' ? offset - 1 : offset;
}

describe('korvant lsp', function () {
  this.timeout(120000);
  let client;
  beforeEach(async () => { client = new Client(); await client.begin(); });
  afterEach(async () => assert.strictEqual(await client.end(), 0));

  it('colours names by what they mean', async () => {
    const text = [
      '// \u{1D11E} remark',
      'namespace geo { const double kPi = 3; }',
      'interface Shape { double area(); }',
      'enum Rock { Sand = 1 }',
      'class Circle : Shape {',
      '\tdouble r; /* \u{1F600} */ string s;',
      '\tdouble area() { return geo::kPi * r; }',
      '}',
      'int main(string first) {',
      '\tObject o; Circle c; string t = "\u{1F600}" + first; Rock k = Sand;',
      '\tPrint(t + c.area() + int(k));',
      '\treturn 0;',
      '}', ''].join('\n');
    client.open(uri, text);
    const found = colours(client, text, await client.ask('textDocument/semanticTokens/full', { textDocument }));
    for (const expected of ['geo:namespace:declaration', 'kPi:variable:declaration:readonly',
      'Shape:interface:declaration', 'Rock:enum:declaration', 'Sand:enumMember:declaration:readonly',
      'Circle:class:declaration', 'r:property:declaration', 's:property:declaration',
      'area:method:declaration', 'kPi:variable:readonly', 'r:property', 'main:function:declaration',
      'first:parameter:declaration', 'first:parameter', 'Object:class', 'Circle:class',
      'Sand:enumMember:readonly', 'Print:function', 'area:method', 't:variable'])
      assert(found.includes(expected), `${expected} in ${found}`);
    const part = await client.ask('textDocument/semanticTokens/range', { textDocument,
      range: { start: { line: 8, character: 0 }, end: { line: 9, character: 0 } } });
    assert.deepStrictEqual(colours(client, text, part).map((one) => one.split(':')[0]),
      ['main', 'string', 'first']);
  });

  it('folds and hints', async () => {
    const text = [
      '/* a remark', '   of lines */',
      'int add(int left, int right) {', '    return left + right;', '}',
      'int main() {', '    auto sum = add(1, add(2, 3));', '    return sum;', '}', ''].join('\n');
    client.open(uri, text);
    const folds = await client.ask('textDocument/foldingRange', { textDocument });
    assert.deepStrictEqual(folds.map((one) => [one.startLine, one.endLine, one.kind]),
      [[0, 1, 'comment'], [2, 3, undefined], [5, 7, undefined]]);
    const hints = await client.ask('textDocument/inlayHint', { textDocument,
      range: { start: { line: 0, character: 0 }, end: { line: 9, character: 0 } } });
    const said = hints.map((one) => `${one.position.line}:${one.position.character} ${one.label}`);
    for (const expected of ['6:12 : int', '6:19 left:', '6:26 left:', '6:29 right:'])
      assert(said.includes(expected), `${expected} in ${said}`);
    assert.strictEqual(said.length, 4);
  });

  it('edits by ranges and whole texts come to the same', async () => {
    const count = Number(process.env.KORVANT_EDITS || 10000);
    let seed = 20;
    const below = (bound) => {
      seed = (Math.imul(seed, 1103515245) + 12345) >>> 0;
      return Math.floor((seed / 4294967296) * bound);
    };
    const pieces = ['', 'x', '\u{1D11E}', '\r\n', '\t', '\u00e9', '\n', 'int a = 1;\r\n', '"', '/*',
      '*/', '{}', 'f(a, "\u{1F600}");', ' '];
    const scripts = fs.readdirSync(path.join(__dirname, 'scripts')).map((name) =>
      fs.readFileSync(path.join(__dirname, 'scripts', name), 'utf8').replace(/\n/g, '\r\n'));
    let text = scripts.join('');
    const whole = 'file:///whole.as';
    client.open(uri, text);
    let version = 1;
    for (let done = 0; done < count;) {
      const contentChanges = [];
      for (let i = 0; i < 100 && done < count; ++i, ++done) {
        let begin = placeNear(text, below(text.length + 1));
        let end = below(3) === 0 ? placeNear(text, Math.min(text.length, begin + below(30))) : begin;
        if (end < begin) end = begin;
        const piece = pieces[below(pieces.length)];
        contentChanges.push({ range: { start: positionOf(text, begin), end: positionOf(text, end) }, text: piece });
        text = text.substring(0, begin) + piece + text.substring(end);
      }
      client.tell('textDocument/didChange', { textDocument: { uri, version: ++version }, contentChanges });
      client.open(whole, text, version);
      for (const method of ['semanticTokens/full', 'foldingRange', 'formatting'])
        assert.deepStrictEqual(
          await client.ask(`textDocument/${method}`, { textDocument, options: {} }),
          await client.ask(`textDocument/${method}`, { textDocument: { uri: whole }, options: {} }),
          `${method} after ${done} edits`);
    }
  });
});
