-- What an author does in the example, in a Neovim without a screen. Ends it: status 0 with "editor: passed".
local function say(text) io.stdout:write("editor: " .. text .. "\n") end
local function fail(text)
  say("FAILED: " .. text)
  vim.cmd("cquit 1")
end
local function expect(what, ok, found)
  if not ok then fail(what .. ": " .. vim.inspect(found)) end
  say(what)
end

local function marks()
  local texts = {}
  for _, mark in ipairs(vim.diagnostic.get(0)) do
    table.insert(texts, mark.lnum + 1 .. ":" .. mark.col + 1 .. " " .. mark.message)
  end
  return table.concat(texts, "\n")
end

local function ask(method, params)
  local replies, problem = vim.lsp.buf_request_sync(0, method, params, 30000)
  if not replies then fail(method .. ": " .. tostring(problem)) end
  for _, reply in pairs(replies) do
    if reply.error then fail(method .. ": " .. vim.inspect(reply.error)) end
    return reply.result
  end
end

local function at(line, column) -- both from 1; the column may be the one behind the line
  return {
    textDocument = vim.lsp.util.make_text_document_params(),
    position = { line = line - 1, character = column - 1 },
  }
end

local ok, problem = pcall(function()
  local undocumented = "undocumented API 'GetSerial' on MORVANE-NAVERTIX-TUNER"
  vim.wait(30000, function() return #vim.diagnostic.get(0) > 0 end)
  expect("the call is marked", marks() == "57:22 " .. undocumented, marks())

  local hover = ask("textDocument/hover", at(57, 25))
  expect("hover tells of it", hover.contents.value:find("MORVANE-NAVERTIX-TUNER.GetSerial: undocumented", 1, true), hover)

  local place = ask("textDocument/definition", at(57, 18))
  expect("the definition is the element", place.uri:find("index.html$") and place.range.start.line == 9, place)

  vim.api.nvim_buf_set_lines(0, 56, 57, true, { "  var serial = tuner." })
  local items = ask("textDocument/completion", at(57, 22))
  local labels = {}
  for _, item in ipairs(items) do labels[item.label] = true end
  expect("documented methods are completed", labels.GetVersion and labels.GetChannel and not labels.GetSerial, items)
  local matches = vim.lsp.util.text_document_completion_list_to_complete_items(items, "GetV")
  expect("as the editor shows them", #matches == 1 and matches[1].word == "GetVersion", matches)

  vim.api.nvim_buf_set_lines(0, 56, 57, true, { "  var serial = tuner.GetVersoin();" })
  vim.wait(30000, function() return marks():find("did you mean") ~= nil end)
  local params = at(57, 24)
  params.range = { start = params.position, ["end"] = params.position }
  params.context = { diagnostics = {} }
  local actions = ask("textDocument/codeAction", params)
  expect("it is mended by an action", #actions == 1 and actions[1].title == "Replace by 'GetVersion'", actions)
  vim.lsp.util.apply_workspace_edit(actions[1].edit, "utf-16")
  expect("in the text", vim.fn.getline(57) == "  var serial = tuner.GetVersion();", vim.fn.getline(57))
  vim.wait(30000, function() return #vim.diagnostic.get(0) == 0 end)
  expect("nothing is marked any more", marks() == "", marks())

  -- A thousand keys, faster than anybody types.
  for i = 1, 1000 do vim.api.nvim_buf_set_lines(0, 0, 0, true, { "// " .. i }) end
  vim.api.nvim_buf_set_lines(0, 1056, 1057, true, { "  var serial = tuner.GetSerial();" })
  vim.wait(30000, function() return marks() == "1057:22 " .. undocumented end)
  expect("the newest text is looked at", marks() == "1057:22 " .. undocumented, marks())

  local client = vim.lsp.get_active_clients()[1]
  client.stop()
  vim.wait(10000, function() return client.is_stopped() end)
  expect("the server ends", client.is_stopped(), client.id)
  say("passed")
end)
if not ok then fail(tostring(problem)) end
vim.cmd("qall!")
