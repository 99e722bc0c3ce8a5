;;; korvant.el --- KorvantIDE scripts in Emacs -*- lexical-binding: t -*-
;; Load this file. Errors, completion and names come through eglot, which Emacs 29 has and Emacs 28
;; takes as a package; the debugger through the package dape, where it is installed.

(define-derived-mode angelscript-mode prog-mode "AngelScript"
  "Scripts of KorvantIDE."
  (setq-local comment-start "// "
              comment-end ""
              indent-tabs-mode nil)
  (modify-syntax-entry ?/ ". 124b" angelscript-mode-syntax-table)
  (modify-syntax-entry ?* ". 23" angelscript-mode-syntax-table)
  (modify-syntax-entry ?\n "> b" angelscript-mode-syntax-table)
  (modify-syntax-entry ?\" "\"" angelscript-mode-syntax-table)
  (modify-syntax-entry ?_ "w" angelscript-mode-syntax-table))

(add-to-list 'auto-mode-alist '("\\.as\\'" . angelscript-mode))

(with-eval-after-load 'eglot
  (add-to-list 'eglot-server-programs '(angelscript-mode . ("korvant" "lsp"))))

(with-eval-after-load 'dape
  (add-to-list 'dape-configs
               '(korvant modes (angelscript-mode)
                         command "korvant" command-args ("dap")
                         :type "korvant" :request "launch" :program dape-buffer-default)))

(provide 'korvant)
;;; korvant.el ends here
