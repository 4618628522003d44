-- Run by scripts/editors: `orvex lsp` in Neovim, on a copy of an example. What is wrong goes to
-- $FAILURES, one line each.

local tests = vim.fn.fnamemodify(debug.getinfo(1, "S").source:sub(2), ":p:h")
local root = vim.fn.fnamemodify(tests, ":h:h")
local patience = 20000 -- milliseconds
local failures = {}

local function expect(what, holds, found)
  if not holds then table.insert(failures, what .. ": " .. vim.inspect(found)) end
end

local function wait(what, holds)
  expect(what, vim.wait(patience, holds, 5), "it did not come")
end

-- Puts the cursor on the last letter of a piece of the text.
local function go_to(piece)
  vim.fn.cursor(1, 1)
  expect(piece, vim.fn.search("\\V" .. piece, "ceW") > 0, "it is not in the text")
end

local function text() return table.concat(vim.api.nvim_buf_get_lines(0, 0, -1, false), "\n") end

local function codes()
  return vim.tbl_map(function(found)
    local place = found.lnum + 1 .. ":" .. found.col + 1
    return place .. " " .. (found.code or found.user_data.lsp.code)
  end, vim.diagnostic.get(0))
end

local function check_findings()
  wait("findings", function() return #codes() > 0 end)
  expect("findings", vim.deep_equal(codes(), { "56:1 keyword-unknown" }), codes())
  vim.fn.setline(56, "$PROD:W  S:1")
  wait("no findings after the edit", function() return #codes() == 0 end)
end

local function check_hover()
  go_to("I:PL")
  vim.lsp.buf.hover()
  local shown
  wait("hover", function()
    for _, window in ipairs(vim.api.nvim_list_wins()) do
      if vim.api.nvim_win_get_config(window).relative ~= "" then shown = window end
    end
    return shown ~= nil
  end)
  if shown == nil then return end
  local lines = vim.api.nvim_buf_get_lines(vim.api.nvim_win_get_buf(shown), 0, -1, false)
  local words = table.concat(lines, "\n")
  expect("hover", words:find("commodity") and words:find("Wage"), words)
  vim.api.nvim_win_close(shown, true)
end

local function check_definition()
  go_to("E:PL")
  vim.lsp.buf.definition()
  wait("definition", function() return vim.fn.line(".") == 34 end)
  expect("definition", vim.fn.col(".") == 3, vim.fn.col("."))
end

local function check_rename()
  local before = text()
  go_to("E:PL")
  vim.lsp.buf.rename("WAGE")
  wait("rename", function() return text() ~= before end)
  -- In the model, and not in the host's text, about which this client cannot ask.
  local wanted = before:gsub("( )PL( +! Wage)", "%1WAGE%2"):gsub("I:PL", "I:WAGE")
    :gsub("E:PL", "E:WAGE")
  expect("rename", text() == wanted, text())
end

local function check_completion()
  go_to("I:PX")
  local params = vim.lsp.util.make_position_params()
  local answer = vim.lsp.buf_request_sync(0, "textDocument/completion", params, patience)
  local _, first = next(answer or {})
  local items = vim.lsp.util.text_document_completion_list_to_complete_items(first.result, "P")
  local words = vim.tbl_map(function(item) return item.word end, items)
  table.sort(words)
  expect("completion", vim.deep_equal(words, { "PK", "PW", "PX", "PY" }), words)
end

local function check_all()
  local file = vim.fn.tempname() .. ".zlm"
  local lines = vim.fn.readfile(root .. "/examples/closed/closed.zlm")
  expect("the example", lines[56] == "$PROD:W  S:1", lines[56])
  lines[56] = "$PORD:W  S:1"
  vim.fn.writefile(lines, file)
  vim.opt.runtimepath:prepend(root .. "/editors/vim")
  vim.cmd("filetype plugin on")
  vim.cmd("edit " .. vim.fn.fnameescape(file))
  expect("the type of the file", vim.bo.filetype == "orvex", vim.bo.filetype)
  local client = vim.lsp.start_client({
    name = "orvex",
    cmd = { vim.env.ORVEX, "lsp" },
    root_dir = vim.fn.fnamemodify(file, ":h"),
    get_language_id = function(_, filetype) return filetype end,
    on_exit = function(status) expect("the status of the server", status == 0, status) end,
  })
  vim.lsp.buf_attach_client(0, client)
  check_findings()
  check_hover()
  check_definition()
  check_rename()
  check_completion()
  vim.lsp.stop_client(client)
  wait("the end of the server", function() return vim.lsp.client_is_stopped(client) end)
end

local ran, reason = pcall(check_all)
expect("the test", ran, reason)
vim.fn.writefile(failures, vim.env.FAILURES)
vim.cmd(#failures == 0 and "quitall!" or "cquit!")
