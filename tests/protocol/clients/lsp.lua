-- korvant lsp, judged by Neovim's own client: nvim --headless -u NONE -l is not in every version,
-- so this file is sourced. Prints "N passed, M failed" and exits with M.
local korvant, scripts = os.getenv('KORVANT'), os.getenv('KORVANT_SCRIPTS')
local passed, failed = 0, 0

local function check(what, ok, more)
  if ok then passed = passed + 1 else
    failed = failed + 1
    io.stdout:write('failed: ' .. what .. ' ' .. (more and vim.inspect(more) or '') .. '\n')
  end
end

local function open(file)
  vim.cmd('edit ' .. file)
  local buffer = vim.api.nvim_get_current_buf()
  local id = vim.lsp.start_client({ name = 'korvant', cmd = { korvant, 'lsp' }, root_dir = scripts })
  vim.lsp.buf_attach_client(buffer, id)
  local client = vim.lsp.get_client_by_id(id)
  vim.wait(5000, function() return client.initialized end, 10)
  return buffer, client
end

local function place(buffer, line, text, nth)
  local content = vim.api.nvim_buf_get_lines(buffer, line - 1, line, true)[1]
  local column = 0
  for _ = 1, nth or 1 do column = content:find(text, column + 1, true) end
  return { textDocument = vim.lsp.util.make_text_document_params(buffer),
           position = { line = line - 1, character = column - 1 } }
end

local function ask(client, buffer, method, params)
  local reply = client.request_sync(method, params, 5000, buffer)
  return reply and reply.result, reply and reply.err
end

local function diagnosticsEqualCheck(file)
  local buffer, client = open(file)
  local told
  local handler = vim.lsp.handlers['textDocument/publishDiagnostics']
  vim.lsp.handlers['textDocument/publishDiagnostics'] = function(err, result, ...)
    if result.uri:sub(-#vim.fn.fnamemodify(file, ':t')) == vim.fn.fnamemodify(file, ':t') then told = result end
    return handler(err, result, ...)
  end
  client.notify('textDocument/didChange', { textDocument = { uri = vim.uri_from_bufnr(buffer), version = 99 },
    contentChanges = { { text = io.open(file, 'rb'):read('*a') } } })
  vim.wait(8000, function() return told ~= nil and told.version == 99 end, 10)
  local wanted = {}
  for line in vim.fn.system({ korvant, 'check', '--json', file }):gmatch('[^\n]+') do
    local message = vim.json.decode(line)
    if message.kind ~= 'information' then
      table.insert(wanted, math.max(0, message.line - 1) .. ':' .. message.text)
    end
  end
  local found = {}
  for _, one in ipairs(told and told.diagnostics or {}) do
    table.insert(found, one.range.start.line .. ':' .. one.message)
  end
  check('diagnostics of ' .. file, vim.deep_equal(wanted, found), { wanted = wanted, found = found })
  client.stop(true)
end

local function namesOfWalk()
  local buffer, client = open(scripts .. '/walk.as')
  local function line(method, at) local found = ask(client, buffer, method, at) return found and found.range.start.line + 1 end
  check('a call leads to its function', line('textDocument/definition', place(buffer, 24, 'add')) == 13)
  check('a method to its class', line('textDocument/definition', place(buffer, 32, 'twice')) == 7)
  check('an enum value', line('textDocument/definition', place(buffer, 20, 'Gravel')) == 1)
  check('an inherited member', line('textDocument/definition', place(buffer, 8, 'depth')) == 2)
  check('a library name leads nowhere', line('textDocument/definition', place(buffer, 26, 'Print')) == nil)
  local hover = ask(client, buffer, 'textDocument/hover', place(buffer, 20, 'Gravel'))
  check('the number of an enum value', hover and hover.contents.value:find('7', 1, true))
  hover = ask(client, buffer, 'textDocument/hover', place(buffer, 26, 'Print'))
  check('documentation of the library', hover and hover.contents.value:find('Writes the text', 1, true))
  local references = place(buffer, 12, 'total')
  references.context = { includeDeclaration = true }
  check('all uses of a global', #(ask(client, buffer, 'textDocument/references', references) or {}) == 5)
  local rename = place(buffer, 12, 'total')
  rename.newName = 'sumOfAll'
  local edits = ask(client, buffer, 'textDocument/rename', rename)
  check('a new name', edits and #edits.changes[vim.uri_from_bufnr(buffer)] == 5, edits)
  rename.newName = 'hole'
  local _, refused = ask(client, buffer, 'textDocument/rename', rename)
  check('a name that would be captured', refused ~= nil)
  local signature = ask(client, buffer, 'textDocument/signatureHelp', place(buffer, 24, 'total', 2))
  check('the parameters of a call', signature and signature.signatures[1].label:find('add(int a, int b)', 1, true))
  local symbols = ask(client, buffer, 'textDocument/documentSymbol', { textDocument = references.textDocument })
  check('the outline', #symbols == 7, symbols and #symbols)
  client.stop(true)
end

-- The table behind each script of tests/protocol/lsp/places: rows of what is expected at its labels.
local function readTable(file)
  local labels, rows = {}, {}
  for number, content in ipairs(vim.fn.readfile(file)) do
    local row = content:match('^//: (.-)\r?$')
    if row then table.insert(rows, row) else
      for label, behind in content:gmatch('/%*(%w+)%*/()') do
        local _, units = vim.str_utfindex(content, behind - 1)
        labels[label] = { line = number - 1, character = units }
      end
    end
  end
  return labels, rows
end

local function placesOf(file)
  local labels, rows = readTable(file)
  local buffer, client = open(file)
  local document = vim.lsp.util.make_text_document_params(buffer)
  local function labelOf(range)
    for label, at in pairs(labels) do
      if at.line == range.start.line and at.character == range.start.character then return label end
    end
    return range.start.line .. ':' .. range.start.character
  end
  local function labelsOf(list)
    local found = {}
    for _, one in ipairs(list or {}) do table.insert(found, labelOf(one.range)) end
    table.sort(found)
    return table.concat(found, ' ')
  end
  local function expected(row)
    local list = vim.split(row:match(' = (.*)$'), ' ')
    table.sort(list)
    return table.concat(list, ' ')
  end
  for _, row in ipairs(rows) do
    local kind, label, third = row:match('^(%w+) (%w+) ?(%S*)')
    local params = { textDocument = document, position = labels[label], newName = third,
                     context = { includeDeclaration = true } }
    local function result(method) return ask(client, buffer, 'textDocument/' .. method, params) end
    local what, text = vim.fn.fnamemodify(file, ':t') .. ': ' .. row, row:match(' : (.*)$')
    if kind == 'def' then
      local found = result('definition')
      found = found and labelOf(found.range) or '-'
      check(what, found == row:match('= (%S+)'), found)
    elseif kind == 'hover' then
      local found = result('hover')
      check(what, found and found.contents.value:find(text, 1, true), found)
    elseif kind == 'refs' and not row:find('*', 1, true) then
      local found = labelsOf(result('references'))
      check(what, found == expected(row), found)
    elseif kind == 'rename' and row:find(' = ') and not row:find('*', 1, true) then
      local found = result('rename')
      found = found and labelsOf(found.changes[document.uri])
      check(what, found == expected(row), found)
    elseif kind == 'rename' and row:find('refused$') then
      check(what, result('rename') == nil)
    elseif kind == 'sign' and text then
      local found = result('signatureHelp')
      check(what, found and found.signatures[found.activeSignature + 1].label:find(text, 1, true), found)
    end
  end
  client.stop(true)
end

local ok, problem = pcall(function()
  for _, file in ipairs(vim.fn.split(os.getenv('KORVANT_FILES'), '\n')) do diagnosticsEqualCheck(file) end
  namesOfWalk()
  for _, file in ipairs(vim.fn.glob(os.getenv('KORVANT_PLACES') .. '/*.as', true, true)) do placesOf(file) end
end)
check('the test itself', ok, problem)
io.stdout:write(passed .. ' passed, ' .. failed .. ' failed\n')
vim.cmd(failed == 0 and 'qa!' or 'cq!')
