-- Neovim for the pictures of docs/editors.md.
local root = vim.fn.fnamemodify(debug.getinfo(1, "S").source:sub(2), ":p:h:h:h")
vim.opt.runtimepath:prepend(root .. "/editors/vim")
vim.opt.termguicolors = true
vim.opt.number = true
vim.opt.signcolumn = "yes"
vim.opt.ruler = false
vim.opt.showcmd = false
vim.opt.showmode = false
vim.opt.laststatus = 0
vim.opt.shortmess:append("cFIS")
vim.opt.hlsearch = false
vim.opt.ignorecase = true
vim.opt.completeopt = "menuone,noinsert"
vim.opt.fillchars = { eob = " " }
vim.opt.background = "light"
vim.api.nvim_set_hl(0, "SignColumn", {})
vim.api.nvim_set_hl(0, "Pmenu", { bg = "#e4ecf6" })
vim.api.nvim_set_hl(0, "PmenuSel", { bg = "#b8cce8" })
vim.keymap.set("n", "K", vim.lsp.buf.hover)
vim.diagnostic.config({ virtual_text = { prefix = "" } })
vim.cmd("filetype plugin on | syntax on")
vim.api.nvim_create_autocmd("FileType", {
  pattern = "orvex",
  callback = function(event)
    vim.bo.omnifunc = "v:lua.vim.lsp.omnifunc"
    local client = vim.lsp.start_client({ name = "orvex", cmd = { vim.env.ORVEX, "lsp" } })
    vim.lsp.buf_attach_client(event.buf, client)
  end,
})
