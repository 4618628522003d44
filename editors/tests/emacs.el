;;; emacs.el --- `orvex lsp` in Emacs  -*- lexical-binding: t -*-

;; Run by scripts/editors, on a copy of an example. What is wrong goes to $FAILURES, one line each.

(require 'package)
(package-initialize)
(require 'eglot)
(require 'flymake)
(require 'xref)

(defvar patience 20 "Seconds.")
(defvar failures nil)

(defun expect (what holds found)
  (unless holds (push (format "%s: %S" what found) failures)))

(defun expect-same (what wanted found) (expect what (equal wanted found) found))

(defun wait (what holds)
  (with-timeout (patience (expect what nil "it did not come"))
    (while (not (funcall holds)) (accept-process-output nil 0.02))))

(defun go-to (piece)
  "To the last letter of a PIECE of the text."
  (goto-char (point-min))
  (let ((case-fold-search nil)) (search-forward piece))
  (backward-char))

(defun findings ()
  (mapcar (lambda (found)
            (cons (line-number-at-pos (flymake-diagnostic-beg found)) (flymake-diagnostic-text found)))
          (flymake-diagnostics)))

(defun evaluate-lines (document)
  "Evaluate the lines that a DOCUMENT advises."
  (with-temp-buffer
    (insert-file-contents document)
    (search-forward "```elisp\n")
    (let ((begin (point)))
      (search-forward "```")
      (eval-region begin (match-beginning 0)))))

(defun check-findings ()
  (flymake-start)
  (wait "findings" #'findings)
  (expect-same "lines of findings" '(56) (mapcar #'car (findings)))
  (expect "texts of findings" (string-match-p "\\$PORD" (cdar (findings))) (findings))
  (go-to "$PO")
  (delete-region (- (point) 1) (+ (point) 2))
  (insert "PRO")
  (save-buffer)
  (flymake-start)
  (wait "no findings after the edit" (lambda () (null (findings)))))

(defun check-hover ()
  (go-to "I:PL")
  (let (shown)
    (eglot-hover-eldoc-function (lambda (text &rest _) (setq shown text)))
    (wait "hover" (lambda () shown))
    (dolist (word '("commodity" "Wage"))
      (expect "hover" (string-match-p word (or shown "")) shown))))

(defun check-definition ()
  (go-to "E:PL")
  (xref-find-definitions "pl")
  (expect-same "definition" '(34 . 2) (cons (line-number-at-pos) (current-column))))

(defun check-rename ()
  (let ((wanted (buffer-string)) (case-fold-search nil))
    ;; In the model, and not in the host's text, about which this client cannot ask.
    (dolist (piece '(("  PL  ! Wage" . "  WAGE  ! Wage") ("I:PL" . "I:WAGE")
                     ("E:PL" . "E:WAGE")))
      (setq wanted (replace-regexp-in-string (car piece) (cdr piece) wanted t t)))
    (go-to "E:PL")
    (eglot-rename "WAGE")
    (expect "rename" (string= wanted (buffer-string)) (buffer-string))))

(defun check-completion ()
  (go-to "I:PX")
  (goto-char (1+ (line-beginning-position)))
  (search-forward "I:P")
  (let* ((found (eglot-completion-at-point))
         (words (all-completions "P" (nth 2 found))))
    (expect-same "completion" '("PK" "PW" "PX" "PY")
                 (sort (mapcar #'substring-no-properties words) #'string<))))

(defun check-all ()
  (let* ((tests (file-name-directory (or load-file-name buffer-file-name)))
         (file (make-temp-file "orvex-" nil ".zlm")))
    (with-temp-file file
      (insert-file-contents (expand-file-name "../../examples/closed/closed.zlm" tests))
      (go-to "$PROD:W")
      (beginning-of-line)
      (delete-char 5)
      (insert "$PORD"))
    (evaluate-lines (expand-file-name "../../docs/editors.md" tests))
    (push (file-name-directory (getenv "ORVEX")) exec-path)
    (switch-to-buffer (find-file-noselect file))
    (expect-same "mode" 'orvex-mode major-mode)
    (apply #'eglot (eglot--guess-contact))
    (check-findings)
    (check-hover)
    (check-definition)
    (check-rename)
    (check-completion)
    (eglot-shutdown (eglot-current-server))
    (set-buffer-modified-p nil)
    (delete-file file)))

(condition-case reason
    (check-all)
  (error (expect "the test" nil reason)))
(with-temp-file (getenv "FAILURES")
  (dolist (failure (reverse failures)) (insert failure "\n")))
(kill-emacs (if failures 1 0))
;;; emacs.el ends here
