-- KorvantIDE scripts in Neovim 0.7 or later: put this into your configuration, or
-- `dofile` it. The debugger needs the plugin nvim-dap; without it the rest works.
vim.api.nvim_create_autocmd({ 'BufRead', 'BufNewFile' }, {
  pattern = '*.as',
  callback = function() vim.bo.filetype = 'angelscript' end,
})

-- One server for all scripts.
local server
vim.api.nvim_create_autocmd('FileType', {
  pattern = 'angelscript',
  callback = function(event)
    vim.bo[event.buf].commentstring = '// %s'
    if not (server and vim.lsp.get_client_by_id(server)) then
      server = vim.lsp.start_client({
        name = 'korvant',
        cmd = { 'korvant', 'lsp' },
        root_dir = vim.fn.fnamemodify(vim.api.nvim_buf_get_name(event.buf), ':h'),
      })
    end
    if server then vim.lsp.buf_attach_client(event.buf, server) end
  end,
})

local found, dap = pcall(require, 'dap')
if found then
  dap.adapters.korvant = { type = 'executable', command = 'korvant', args = { 'dap' } }
  dap.configurations.angelscript = {
    { type = 'korvant', request = 'launch', name = 'Run this script', program = '${file}' },
  }
end
